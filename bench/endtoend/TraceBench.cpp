// Where the time between a key and the picture on the screen goes: the program records its steps, the
// benchmark presses keys and puts the record together. The record itself (Chrome trace events) can be kept.

#include "endtoend/EditorDesktop.h"
#include "endtoend/Eyes.h"
#include "endtoend/TraceRecord.h"
#include "support/Report.h"
#include "support/Samples.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

struct Shot {
    double pressed; ///< milliseconds of the steady clock
    Eyes::Sighting sighting;
};

struct Step {
    QString name;
    QString meaning;
    Samples after; ///< the key press was sent
    Samples taking;
};

std::vector<Step> steps() {
    return {{u"key"_s, u"key press heard and looked up"_s, {}, {}},
            {u"lookup"_s, u"… of that, the lookup"_s, {}, {}},
            {u"report"_s, u"reported to the program, and all that follows"_s, {}, {}},
            {u"label"_s, u"… the words put together"_s, {}, {}},
            {u"show"_s, u"… the controller's whole `show`"_s, {}, {}},
            {u"measure"_s, u"…… label measured"_s, {}, {}},
            {u"shadow"_s, u"…… shadow drawn, while the server looks what lies behind"_s, {}, {}},
            {u"backdrop"_s, u"…… picture of what lies behind"_s, {}, {}},
            {u"blur"_s, u"…… blur of it"_s, {}, {}},
            {u"paint"_s, u"…… capsule drawn"_s, {}, {}},
            {u"compose"_s, u"…… first picture put together"_s, {}, {}},
            {u"put"_s, u"…… handed to the server"_s, {}, {}},
            {u"map"_s, u"…… window mapped, everything sent"_s, {}, {}},
            {u"sound"_s, u"…… sound handed to its thread"_s, {}, {}},
            {u"pixelsRead"_s, u"the server has read the picture"_s, {}, {}}};
}

/// The first time that each step was taken after each key press.
void assign(std::vector<Step>& all, const std::vector<TraceEvent>& events, const std::vector<Shot>& shots) {
    for (const auto& shot : shots) {
        constexpr double within = 100; // milliseconds; later ones belong to nothing
        for (auto& step : all) {
            const auto first = std::ranges::find_if(events, [&](const auto& event) {
                return event.name == step.name && event.begin >= shot.pressed;
            });
            if (first != events.end() && first->begin < shot.pressed + within) {
                step.after.add(first->begin - shot.pressed);
                step.taking.add(first->duration);
            }
        }
    }
}

int run(int count, const QString& document, const QString& keep) {
    EditorDesktop desktop;
    const QString path = keep.isEmpty() ? desktop.session().home() + u"/trace.json"_s : keep;
    desktop.session().setVariable(u"ORVANTILE_TRACE"_s, path);
    Eyes eyes(desktop.session().display());
    eyes.paintDesktop();
    eyes.watch(u"orvantile"_s);
    desktop.startOrvantile();
    constexpr int warm = 10;
    std::vector<Shot> shots;
    Samples mapped;
    Samples changed;
    for (int shot = 0; shot < count + warm; ++shot) {
        const auto sighting = eyes.shoot();
        if (shot >= warm && sighting.isComplete()) {
            shots.push_back({eyes.pressedAt(), sighting});
            mapped.add(sighting.mapped);
            changed.add(sighting.changed);
        }
    }
    desktop.stopOrvantile();
    auto all = steps();
    assign(all, readTrace(path), shots);
    Report report(u"steps"_s);
    report.table({u"shots"_s, u"begins after the key, median"_s, u"takes, median"_s, u"takes, p95"_s});
    for (const auto& step : all) {
        report.row({step.meaning, QString::number(step.after.count()), shortNumber(step.after.median()),
                    shortNumber(step.taking.median()), shortNumber(step.taking.quantile(0.95))});
    }
    report.row({u"seen from outside: mapped"_s, QString::number(mapped.count()), shortNumber(mapped.median()),
                u"–"_s, u"–"_s});
    report.row({u"seen from outside: first changed pixel"_s, QString::number(changed.count()),
                shortNumber(changed.median()), u"–"_s, u"–"_s});
    report.deliver(document);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using Qt::StringLiterals::operator""_s;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"shots"_s, u"Key presses."_s, u"count"_s, u"200"_s},
                       {u"keep"_s, u"Keep the record here."_s, u"file"_s},
                       {u"write"_s, u"Put the table into this document."_s, u"file"_s}});
    parser.addHelpOption();
    parser.process(application);
    try {
        return orvantile::bench::run(parser.value(u"shots"_s).toInt(), parser.value(u"write"_s),
                                     parser.value(u"keep"_s));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
