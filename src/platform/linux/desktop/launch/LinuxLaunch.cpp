#include "platform/linux/desktop/launch/LinuxLaunch.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

bool hasVisibleWindows() {
    const auto windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [](const QWidget* window) { return window->isVisible(); });
}

} // namespace

// The toolkit takes the token out of the environment when its application object is made.
LinuxLaunch::LinuxLaunch() : token(LaunchToken::fromEnvironment()) {}

bool LinuxLaunch::isTakenOver() {
    instance.emplace(SessionBus::open(), QGuiApplication::desktopFileName().toStdString(),
                     [this](const LaunchToken& launching) { launchedAgain(launching); });
    if (instance->handOver(token)) {
        return true;
    }
    // Not by closing windows one after the other, which a dialog could hold up.
    signals.emplace([] { QCoreApplication::exit(EXIT_SUCCESS); });
    return false;
}

void LinuxLaunch::onReopen(ReopenHandler handler) {
    reopen = std::move(handler);
}

void LinuxLaunch::launchedAgain(const LaunchToken& launching) {
    // Before the program has finished launching, this is the launch that the bus has started it for.
    if (reopen) {
        LaunchToken::clearEnvironment();
    }
    launching.putIntoEnvironment();
    if (reopen) {
        QMetaObject::invokeMethod(
            &context, [this] { reopen(hasVisibleWindows()); }, Qt::QueuedConnection);
    }
}

} // namespace orvantile::platform::desktop
