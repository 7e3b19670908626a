// From an injected key to the monitor's report, inside one process: what recognising a shortcut takes.

#include "endtoend/EditorDesktop.h"
#include "monitor/ShortcutMonitor.h"
#include "platform/Startup.h"
#include "support/Samples.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <cstdio>
#include <cstdlib>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

int run(int shots) {
    EditorDesktop desktop;
    desktop.session().enter();
    if (const auto refusal = platform::prepareProcess()) {
        throw std::runtime_error(refusal->toStdString());
    }
    int argc = 1;
    char name[] = "bench";
    char* argv[] = {name, nullptr};
    const QApplication app(argc, argv);
    platform::Platform::install(platform::makePlatform());

    QElapsedTimer clock;
    double reportedAfter = -1;
    const auto monitor = std::make_shared<ShortcutMonitor>(platform::Platform::current());
    monitor->onAction = [&](const std::optional<QString>&, const QString&) {
        reportedAfter = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    };
    monitor->start();

    Samples times;
    int missed = 0;
    for (int shot = 0; shot < shots + 20 || (times.count() == 0 && shot < 1000); ++shot) {
        reportedAfter = -1;
        desktop.keys().hold(u"Ctrl"_s);
        clock.restart();
        desktop.keys().press(u"a"_s);
        const QDeadlineTimer deadline(100);
        while (reportedAfter < 0 && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        }
        desktop.keys().release(u"Ctrl"_s);
        if (shot >= 20 && reportedAfter >= 0) {
            times.add(reportedAfter);
        }
        missed += times.count() > 0 && reportedAfter < 0 ? 1 : 0;
    }
    Samples::printHeader();
    times.print(u"key → report, ms"_s);
    std::printf("shots without a report: %d\n", missed);
    return times.count() > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        return orvantile::bench::run(argc > 1 ? std::atoi(argv[1]) : 200);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
