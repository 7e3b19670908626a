// Two hundred shortcuts a second in an editor for a minute: whether the HUD always shows the latest, and what
// that costs.

#include "endtoend/Burst.h"
#include "endtoend/EditorDesktop.h"
#include "support/BusyCores.h"
#include "support/Report.h"
#include "support/Samples.h"
#include "support/desktop/ProcessCost.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

struct Outcome {
    Samples labelled;
    Samples pictured;
    std::vector<double> inOrder; ///< of `labelled`
    std::size_t late = 0;        ///< labels that came more than 20 ms after their key, or never
    std::size_t lost = 0;        ///< labels that never came
    std::size_t misread = 0;     ///< labels that were another when they were read a moment later
};

/// Each press belongs to the label of the same number; should labels be missing, to the first one of its own
/// that comes after it and belongs to no earlier press.
Outcome compare(const std::vector<Burst::Press>& presses, const std::vector<Burst::Sight>& sights) {
    constexpr double goal = 20;      // milliseconds
    constexpr double patience = 500; // later ones belong to another press
    Outcome outcome;
    std::size_t next = 0;
    const bool complete = presses.size() == sights.size();
    for (const auto& press : presses) {
        std::size_t found = next;
        while (!complete && found < sights.size() &&
               (sights[found].labelled < press.time || sights[found].label != press.label)) {
            ++found;
        }
        const double after = found < sights.size() ? sights[found].labelled - press.time : patience;
        if (!complete && after >= patience) {
            ++outcome.lost;
            ++outcome.late;
            continue;
        }
        next = found + 1;
        outcome.misread += sights[found].label == press.label ? 0U : 1U;
        outcome.labelled.add(after);
        outcome.inOrder.push_back(after);
        outcome.late += after > goal ? 1 : 0;
        if (sights[found].pictured >= 0) {
            outcome.pictured.add(sights[found].pictured - press.time);
        }
    }
    return outcome;
}

double medianOf(const std::vector<double>& values, std::size_t from, std::size_t to) {
    Samples samples;
    for (std::size_t i = from; i < to; ++i) {
        samples.add(values[i]);
    }
    return samples.median();
}

void addRow(Report& report, const QString& what, const Samples& times) {
    QStringList cells{what, QString::number(times.count())};
    for (const double fraction : {0.5, 0.95, 0.99, 1.0}) {
        cells << shortNumber(times.quantile(fraction));
    }
    report.row(cells);
}

int run(int rate, int seconds, const QString& document) {
    EditorDesktop desktop;
    const pid_t process = desktop.startOrvantile();
    const std::vector<Burst::Key> keys{{XKB_KEY_a, u"⌃A  Select All"_s}, {XKB_KEY_c, u"⌃C  Copy"_s}};
    Burst(desktop.session().display()).run(keys, rate, std::chrono::seconds(2)); // caches fill
    Burst burst(desktop.session().display());
    const auto before = test::memory(process);
    const double used = test::cpuSeconds(process);
    const double editorUsed = test::cpuSeconds(desktop.editorProcess());
    burst.run(keys, rate, std::chrono::seconds(seconds));
    const double share = (test::cpuSeconds(process) - used) / seconds * 100;
    const double editorShare = (test::cpuSeconds(desktop.editorProcess()) - editorUsed) / seconds * 100;
    const auto after = test::memory(process);
    const auto outcome = compare(burst.presses(), burst.sights());
    Report report(u"throughput"_s);
    report.table({u"shots"_s, u"median"_s, u"p95"_s, u"p99"_s, u"max"_s});
    addRow(report, u"key → the panel has its label"_s, outcome.labelled);
    addRow(report, u"key → picture with it handed to the screen"_s, outcome.pictured);
    const auto tenth = outcome.inOrder.size() / 10;
    report.paragraph(
        u"%1 shortcuts in %2 s, two commands in turns. Labels that came later than 20 ms or never: %3, of "
        u"these "
        "never: %4; replaced before they were read: %7. Median of the first tenth %5 ms, of the last tenth %6 ms."_s
            .arg(burst.presses().size())
            .arg(seconds)
            .arg(outcome.late)
            .arg(outcome.lost)
            .arg(shortNumber(medianOf(outcome.inOrder, 0, tenth)),
                 shortNumber(
                     medianOf(outcome.inOrder, outcome.inOrder.size() - tenth, outcome.inOrder.size())))
            .arg(outcome.misread));
    report.paragraph(u"CPU of Orvantile %1 % of one processor, of the editor %2 %. RSS before and after: %3 "
                     u"and %4 MiB. Load "
                     "at the end %5."_s.arg(shortNumber(share), shortNumber(editorShare),
                                            shortNumber(before.resident), shortNumber(after.resident),
                                            loadNow()));
    report.deliver(document);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using Qt::StringLiterals::operator""_s;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"seconds"_s, u"How long."_s, u"seconds"_s, u"60"_s},
                       {u"rate"_s, u"Shortcuts a second."_s, u"shortcuts"_s, u"200"_s},
                       {u"write"_s, u"Put the table into this document."_s, u"file"_s}});
    parser.addHelpOption();
    parser.process(application);
    try {
        return orvantile::bench::run(parser.value(u"rate"_s).toInt(), parser.value(u"seconds"_s).toInt(),
                                     parser.value(u"write"_s));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
