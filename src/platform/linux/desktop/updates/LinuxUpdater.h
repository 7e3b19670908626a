#pragma once

#include "platform/Updater.h"
#include "platform/linux/desktop/updates/UpdatePolicy.h"

#include <QString>
#include <QUrl>
#include <functional>
#include <optional>

namespace orvantile::platform::desktop {

/// What the updater works with. The program uses `ofThisProgram`.
struct UpdaterEnvironment {
    QString configurationFile;
    QString version;       ///< of the running program
    QString systemRelease; ///< such as "12"; empty when the system has no releases
    QString downloadFolder;
    std::function<bool(const QUrl&)> open; ///< hands a file, folder or page to the desktop
    UpdatePolicy policy{};

    /// The configuration is `../share/orvantile/updates.conf` beside the folder of the executable.
    [[nodiscard]] static UpdaterEnvironment ofThisProgram();
};

/// The update service: looks for updates when the user asks, in a window of its own, downloads a package
/// that its maker has signed and leaves its installation to the desktop. Until the first check it owns
/// nothing, and between checks no thread, timer or connection. Main thread only.
class LinuxUpdater final : public Updater {
public:
    LinuxUpdater() = default;

    /// Works with `environment_` instead of this program's.
    explicit LinuxUpdater(UpdaterEnvironment environment_);

    /// A controller that is not started ignores checks.
    [[nodiscard]] std::unique_ptr<UpdaterController> createController(bool startingUpdater) override;

private:
    std::optional<UpdaterEnvironment> environment;
};

} // namespace orvantile::platform::desktop
