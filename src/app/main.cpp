#include "app/AppDelegate.h"
#include "platform/Platform.h"
#include "platform/Startup.h"
#include "preferences/PreferencesWindow.h"
#include "settings/Settings.h"

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
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orvantile"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orvantile"));
    QApplication::setDesktopFileName(QStringLiteral("org.orvantile.Orvantile"));
    QApplication::setApplicationVersion(QStringLiteral(ORVANTILE_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);

    platform::Platform::install(platform::makePlatform());
    auto& desktop = platform::Platform::current();
    const auto delegate = std::make_shared<AppDelegate>(
        desktop, [&desktop] { return std::make_unique<PreferencesWindow>(Settings::shared(), desktop); });
    desktop.scheduler->runLater([delegate] { delegate->applicationDidFinishLaunching(); });
    return QApplication::exec();
}
