#include "platform/Startup.h"
#include "platform/linux/X11Platform.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/x11/ServerLoss.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/null/NullPlatform.h"

#include <QGuiApplication>

namespace orvantile::platform {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr auto platformVariable = "QT_QPA_PLATFORM";

} // namespace

std::optional<QString> prepareProcess() {
    const auto wanted = qgetenv(platformVariable);
    if (!wanted.isEmpty() && !wanted.startsWith("xcb")) {
        return std::nullopt; // the user knows better
    }
    if (!x11::isServerReachable()) {
        const auto display = qEnvironmentVariable("DISPLAY");
        return display.isEmpty() ? u"there is no X server to connect to: the variable DISPLAY is not set"_s
                                 : u"cannot connect to the X server “%1” that DISPLAY names"_s.arg(display);
    }
    if (wanted.isEmpty()) {
        qputenv(platformVariable, "xcb");
    }
    x11::leaveCleanlyWithoutServer();
    return std::nullopt;
}

std::unique_ptr<Platform> makePlatform() {
    if (QGuiApplication::platformName() == u"xcb") {
        return makeX11Platform();
    }
    auto platform = makeNullPlatform();
    platform->scheduler = std::make_unique<desktop::QtScheduler>();
    return platform;
}

} // namespace orvantile::platform
