// What the program does while nothing is asked of it: wakeups and CPU, with the preferences closed, while
// nothing happens, while the application in front draws all the time, and while an application says all it
// can over the accessibility bus.

#include "endtoend/EditorDesktop.h"
#include "support/BusyCores.h"
#include "support/Report.h"
#include "support/desktop/ProcessCost.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

/// Adds a row about the time until `wait` returns.
void measure(Report& report, const QString& situation, pid_t process, const std::function<QString()>& wait) {
    std::this_thread::sleep_for(3s); // what has happened before is over
    const auto woken = test::wakeups(process);
    const double used = test::cpuSeconds(process);
    const auto start = std::chrono::steady_clock::now();
    const auto note = wait();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const double cpu = test::cpuSeconds(process) - used;
    const auto wakeups = test::wokenBetween(woken, test::wakeups(process));
    const QString what = situation + note;
    report.row({what, QString::number(seconds, 'f', 0), QString::number(wakeups), shortNumber(cpu * 1000),
                QString::number(cpu / seconds * 100, 'f', 3)});
}

int run(int seconds, int rate, const QString& document) {
    EditorDesktop desktop;
    const pid_t process = desktop.startOrvantile();
    const auto resting = [seconds] {
        std::this_thread::sleep_for(std::chrono::seconds(seconds));
        return QString();
    };
    Report report(u"idle"_s);
    report.table({u"seconds"_s, u"wakeups"_s, u"CPU, ms"_s, u"CPU, % of a core"_s});
    measure(report, u"nothing happens"_s, process, resting);
    {
        const auto noise = [&] {
            const auto speaker = desktop.session().start(QStringLiteral(ORVANTILE_NOISE_EXECUTABLE),
                                                         {desktop.session().accessibilityBusAddress(),
                                                          QString::number(seconds), QString::number(rate)});
            const auto sent = speaker->awaitLine(QDeadlineTimer(std::chrono::seconds(2 * seconds + 30)));
            return u", %1 events"_s.arg(sent ? QString::fromLatin1(*sent) : u"an unknown number of"_s);
        };
        const QString what = u"another program tells %1 events a second on the accessibility bus"_s.arg(rate);
        measure(report, what, process, noise);
    }
    const auto redraw = desktop.session().start(QStringLiteral(ORVANTILE_REDRAW_EXECUTABLE));
    desktop.windows().awaitActive(test::ofClass(u"redraw"_s));
    measure(report, u"the window in front is drawn 60 times a second"_s, process, resting);
    const auto held = test::memory(process);
    report.paragraph(u"Load at the end %1. Memory: RSS %2 MiB, PSS %3 MiB, private dirty %4 MiB."_s.arg(
        loadNow(), shortNumber(held.resident), shortNumber(held.proportional),
        shortNumber(held.privateDirty)));
    report.deliver(document);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using Qt::StringLiterals::operator""_s;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"seconds"_s, u"How long in each situation."_s, u"seconds"_s, u"600"_s},
                       {u"rate"_s, u"Events a second on the accessibility bus."_s, u"events"_s, u"10000"_s},
                       {u"write"_s, u"Put the table into this document."_s, u"file"_s}});
    parser.addHelpOption();
    parser.process(application);
    try {
        return orvantile::bench::run(parser.value(u"seconds"_s).toInt(), parser.value(u"rate"_s).toInt(),
                                     parser.value(u"write"_s));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
