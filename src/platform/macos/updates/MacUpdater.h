#pragma once

#include "platform/Updater.h"

namespace orvantile::platform::macos {

/// Sparkle, loaded from the application's own frameworks folder when it is first needed. Without it a check
/// does nothing.
class MacUpdater final : public Updater {
public:
    [[nodiscard]] std::unique_ptr<UpdaterController> createController(bool startingUpdater) override;
};

} // namespace orvantile::platform::macos
