#pragma once

#include <memory>

namespace orvantile::platform {

/// The update machinery with its own windows. Main thread only.
class UpdaterController {
public:
    UpdaterController() = default;
    UpdaterController(const UpdaterController&) = delete;
    UpdaterController& operator=(const UpdaterController&) = delete;
    virtual ~UpdaterController() = default;

    /// A check that the user asked for: shows its progress, its result and its failures by itself.
    virtual void checkForUpdates() = 0;
};

/// Makes the controller.
class Updater {
public:
    Updater() = default;
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    virtual ~Updater() = default;

    [[nodiscard]] virtual std::unique_ptr<UpdaterController> createController(bool startingUpdater) = 0;
};

} // namespace orvantile::platform
