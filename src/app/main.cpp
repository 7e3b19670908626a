#include "app/AppDelegate.h"
#include "platform/Platform.h"
#include "platform/Startup.h"
#include "preferences/PreferencesWindow.h"
#include "settings/Settings.h"
#include "trace/Turns.h"

#include <QApplication>
#include <QTextStream>
#include <cstdlib>
#include <memory>

int main(int argc, char* argv[]) {
    using namespace orvantile;

    if (const auto refusal = platform::prepareProcess()) {
        QTextStream(stderr) << QStringLiteral("orvantile: ") << *refusal << Qt::endl;
        return EXIT_FAILURE;
    }
    const auto launch = platform::beginLaunch();
    QApplication app(argc, argv);
    const trace::Turns turns;
    QApplication::setApplicationName(QStringLiteral("orvantile"));
    QApplication::setDesktopFileName(QStringLiteral("org.orvantile.Orvantile"));
    QApplication::setApplicationVersion(QStringLiteral(ORVANTILE_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    if (launch->isTakenOver()) {
        return EXIT_SUCCESS;
    }

    platform::Platform::install(platform::makePlatform());
    auto& desktop = platform::Platform::current();
    const auto delegate = std::make_shared<AppDelegate>(
        desktop, [&desktop] { return std::make_unique<PreferencesWindow>(Settings::shared(), desktop); });
    launch->onFinished(*desktop.scheduler, [delegate, &launch = *launch] {
        delegate->applicationDidFinishLaunching();
        // What is launched outlives the delegate, whose windows must not outlive the application object.
        launch.onReopen([weak = std::weak_ptr(delegate)](bool hasVisibleWindows) {
            if (const auto self = weak.lock()) {
                self->applicationShouldHandleReopen(hasVisibleWindows);
            }
        });
    });
    return QApplication::exec();
}
