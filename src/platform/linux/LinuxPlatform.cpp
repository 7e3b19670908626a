#include "platform/Startup.h"
#include "platform/linux/WaylandPlatform.h"
#include "platform/linux/X11Platform.h"
#include "platform/linux/desktop/CanberraSounds.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/FreedMemory.h"
#include "platform/linux/desktop/IniDefaults.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/desktop/launch/LinuxLaunch.h"
#include "platform/linux/desktop/statusitem/LinuxStatusBar.h"
#include "platform/linux/desktop/updates/LinuxUpdater.h"
#include "platform/linux/wayland/CompositorLoss.h"
#include "platform/linux/wayland/Globals.h"
#include "platform/linux/wayland/ToolkitBuffers.h"
#include "platform/linux/x11/ServerLoss.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/null/NullPlatform.h"

#include <QGuiApplication>

namespace orvantile::platform {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr auto platformVariable = "QT_QPA_PLATFORM";

std::unique_ptr<Platform> makeWindowlessPlatform() {
    auto platform = makeNullPlatform();
    platform->scheduler = std::make_unique<desktop::QtScheduler>();
    platform->appearance = std::make_unique<desktop::DesktopAppearance>();
    return platform;
}

} // namespace

std::optional<QString> prepareProcess() {
    desktop::returnFreedMemory();
    const auto wanted = qgetenv(platformVariable);
    const bool free = wanted.isEmpty();
    if (wanted.startsWith("wayland") || (free && wayland::offersPanels())) {
        // The toolkit's part for Wayland is a package of its own, and may be missing.
        qputenv(platformVariable, free ? QByteArray("wayland;xcb") : wanted);
        wayland::leaveCleanlyWithoutCompositor();
        wayland::drawWithoutGraphicsHardware();
        x11::leaveCleanlyWithoutServer();
        return std::nullopt;
    }
    if (!free && !wanted.startsWith("xcb")) {
        return std::nullopt; // the user knows better
    }
    if (!x11::isServerReachable()) {
        const auto display = qEnvironmentVariable("DISPLAY");
        return display.isEmpty() ? u"there is no X server to connect to: the variable DISPLAY is not set"_s
                                 : u"cannot connect to the X server “%1” that DISPLAY names"_s.arg(display);
    }
    if (free) {
        qputenv(platformVariable, "xcb");
    }
    x11::leaveCleanlyWithoutServer();
    return std::nullopt;
}

std::unique_ptr<Launch> beginLaunch() {
    return std::make_unique<desktop::LinuxLaunch>();
}

std::unique_ptr<Platform> makePlatform() {
    const auto toolkit = QGuiApplication::platformName();
    wayland::forgetGraphicsHardware();
    const bool onX = toolkit == u"xcb";
    auto platform = onX && wayland::isReachable()      ? makeXwaylandPlatform()
                    : onX                              ? makeX11Platform()
                    : toolkit.startsWith(u"wayland"_s) ? makeWaylandPlatform()
                                                       : makeWindowlessPlatform();
    auto defaults = std::make_unique<desktop::IniDefaults>(desktop::IniDefaults::userFile());
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, qGuiApp,
                     [&defaults = *defaults] { defaults.synchronize(); });
    platform->defaults = std::move(defaults);
    platform->sounds = std::make_unique<desktop::CanberraSounds>(desktop::SoundFolder::ofProgram());
    platform->statusBar =
        std::make_unique<desktop::LinuxStatusBar>(*platform->scheduler, *platform->appearance);
    platform->updater = std::make_unique<desktop::LinuxUpdater>();
    return platform;
}

} // namespace orvantile::platform
