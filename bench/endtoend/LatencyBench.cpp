// From an injected key to what is seen: the program's panel, screenkey's window, and, as the floor, a bare
// client that does nothing but map a window which was drawn before.

#include "endtoend/EditorDesktop.h"
#include "endtoend/Eyes.h"
#include "support/BusyCores.h"
#include "support/Report.h"
#include "support/Samples.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

struct Contestant {
    QString name;
    QString className;
    std::function<void(EditorDesktop&, const Eyes&)> start;
    std::function<void(EditorDesktop&)> stop;
    Samples mapped;
    Samples changed;
    int missed = 0;
};

struct Plan {
    int shots = 100;
    int rounds = 4;
};

/// A program of the bench's own or from the system, in place of the product.
Contestant other(const QString& name, const QString& className,
                 std::function<std::unique_ptr<test::ChildProcess>(EditorDesktop&, const Eyes&)> launch) {
    const auto process = std::make_shared<std::unique_ptr<test::ChildProcess>>();
    return {.name = name,
            .className = className,
            .start = [=](EditorDesktop& desktop, const Eyes& eyes) { *process = launch(desktop, eyes); },
            .stop = [=](EditorDesktop&) { process->reset(); },
            .mapped = {},
            .changed = {}};
}

std::vector<Contestant> contestants() {
    std::vector<Contestant> all;
    all.push_back({.name = u"Orvantile"_s,
                   .className = u"orvantile"_s,
                   .start = [](EditorDesktop& desktop, const Eyes&) { desktop.startOrvantile(); },
                   .stop = [](EditorDesktop& desktop) { desktop.stopOrvantile(); },
                   .mapped = {},
                   .changed = {}});
    all.push_back(other(u"screenkey"_s, u"screenkey"_s, [](EditorDesktop& desktop, const Eyes&) {
        return desktop.session().start(
            u"screenkey"_s, {u"--no-systray"_s, u"-t"_s, u"0.3"_s, u"-p"_s, u"top"_s, u"-s"_s, u"small"_s});
    }));
    all.push_back(other(u"floor: a bare client maps a drawn window"_s, u"floor"_s,
                        [](EditorDesktop& desktop, const Eyes& eyes) {
                            return desktop.session().start(
                                QStringLiteral(ORVANTILE_FLOOR_EXECUTABLE),
                                {QString::number(eyes.key()), u"40"_s, u"700"_s, u"240"_s, u"60"_s});
                        }));
    return all;
}

/// Waits until the contestant shows itself, and a few times more until it has warmed up.
void warmUp(Eyes& eyes, const Contestant& contestant) {
    constexpr int enough = 5;
    int complete = 0;
    for (int attempt = 0; attempt < 60 && complete < enough; ++attempt) {
        complete += eyes.shoot().isComplete() ? 1 : 0;
    }
    if (complete < enough) {
        const QString text = contestant.name + u" never showed a window"_s;
        throw std::runtime_error(text.toStdString());
    }
}

void measure(EditorDesktop& desktop, Eyes& eyes, std::vector<Contestant>& all, const Plan& plan) {
    for (int round = 0; round < plan.rounds; ++round) {
        for (auto& contestant : all) {
            eyes.watch(contestant.className);
            contestant.start(desktop, eyes);
            warmUp(eyes, contestant);
            for (int shot = 0; shot < plan.shots / plan.rounds; ++shot) {
                const auto sighting = eyes.shoot();
                if (!sighting.isComplete()) {
                    ++contestant.missed;
                    continue;
                }
                contestant.mapped.add(sighting.mapped);
                contestant.changed.add(sighting.changed);
            }
            contestant.stop(desktop);
        }
    }
}

void addRows(Report& report, const std::vector<Contestant>& all, bool pixels) {
    const auto samples = [&](const Contestant& one) -> const Samples& {
        return pixels ? one.changed : one.mapped;
    };
    const double floor = std::max(samples(all.back()).median(), 1e-9);
    for (const auto& contestant : all) {
        const auto& times = samples(contestant);
        QStringList cells{(pixels ? u"first changed pixel: "_s : u"window mapped: "_s) + contestant.name,
                          QString::number(times.count())};
        for (const double fraction : {0.5, 0.95, 0.99, 1.0}) {
            cells << shortNumber(times.quantile(fraction));
        }
        cells << shortNumber(times.median() / floor) << QString::number(contestant.missed);
        report.row(cells);
    }
}

int run(const Plan& plan, const QList<bool>& loads, const QString& document) {
    EditorDesktop desktop;
    Eyes eyes(desktop.session().display());
    eyes.paintDesktop();
    Report report(u"latency"_s);
    for (const bool busy : loads) {
        auto all = contestants();
        std::optional<BusyCores> cores;
        if (busy) {
            cores.emplace();
        }
        measure(desktop, eyes, all, plan);
        report.paragraph(
            (busy
                 ? u"With a busy loop on each processor (load %1):"_s
                 : u"With nothing else to do for the processors but what this machine does besides (load %1):"_s)
                .arg(loadNow()));
        report.table({u"shots"_s, u"median"_s, u"p95"_s, u"p99"_s, u"max"_s, u"of the floor's median"_s,
                      u"not seen"_s});
        addRows(report, all, false);
        addRows(report, all, true);
    }
    report.deliver(document);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using Qt::StringLiterals::operator""_s;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"shots"_s, u"Key presses per contestant."_s, u"count"_s, u"200"_s},
                       {u"rounds"_s, u"In how many turns."_s, u"count"_s, u"4"_s},
                       {u"load"_s, u"Only with busy processors."_s},
                       {u"no-load"_s, u"Only without busy processors."_s},
                       {u"write"_s, u"Put the tables into this document."_s, u"file"_s}});
    parser.addHelpOption();
    parser.process(application);
    QList<bool> loads;
    if (!parser.isSet(u"load"_s)) {
        loads << false;
    }
    if (!parser.isSet(u"no-load"_s)) {
        loads << true;
    }
    try {
        return orvantile::bench::run({.shots = parser.value(u"shots"_s).toInt(),
                                      .rounds = std::max(parser.value(u"rounds"_s).toInt(), 1)},
                                     loads, parser.value(u"write"_s));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
