#include "platform/linux/desktop/updates/LinuxUpdater.h"

#include "platform/linux/desktop/updates/UpdateSession.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QStandardPaths>
#include <QSysInfo>

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

class LinuxUpdaterController final : public UpdaterController {
public:
    explicit LinuxUpdaterController(std::optional<UpdaterEnvironment> environment_)
        : environment(std::move(environment_)) {}

    void checkForUpdates() override {
        if (!environment) {
            return;
        }
        if (!session) {
            session = std::make_unique<UpdateSession>(*environment);
        }
        session->check();
    }

private:
    std::optional<UpdaterEnvironment> environment;
    std::unique_ptr<UpdateSession> session;
};

} // namespace

UpdaterEnvironment UpdaterEnvironment::ofThisProgram() {
    const QDir programs(QCoreApplication::applicationDirPath());
    return {QDir::cleanPath(programs.filePath(u"../share/orvantile/updates.conf"_s)),
            QCoreApplication::applicationVersion(), QSysInfo::productVersion(),
            QStandardPaths::writableLocation(QStandardPaths::DownloadLocation),
            [](const QUrl& url) { return QDesktopServices::openUrl(url); }};
}

LinuxUpdater::LinuxUpdater(UpdaterEnvironment environment_) : environment(std::move(environment_)) {}

std::unique_ptr<UpdaterController> LinuxUpdater::createController(bool startingUpdater) {
    if (!startingUpdater) {
        return std::make_unique<LinuxUpdaterController>(std::nullopt);
    }
    return std::make_unique<LinuxUpdaterController>(environment ? *environment
                                                                : UpdaterEnvironment::ofThisProgram());
}

} // namespace orvantile::platform::desktop
