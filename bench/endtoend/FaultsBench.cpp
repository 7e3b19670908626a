// What is left of the program while a part of the desktop hangs or is gone, and how soon everything works
// again afterwards. The program records the turns of its main loop: the longest tells how long anything had
// to wait.

#include "endtoend/EditorDesktop.h"
#include "endtoend/TraceRecord.h"
#include "support/BusyCores.h"
#include "support/Report.h"
#include "support/Samples.h"
#include "support/desktop/HudWatcher.h"
#include "support/desktop/PanelHost.h"
#include "support/desktop/SessionBusCalls.h"
#include "support/sound/SoundServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

double now() {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

struct Fault {
    QString what;
    std::function<void()> begin;
    std::function<void()> end; ///< returns when the part is there again
};

struct Result {
    QString what;
    Samples named{}; ///< key → the command is on the screen, while the part is missing
    int missed = 0;
    double again = -1; ///< from the part's return to the first command that is named
    double begin = 0;  ///< of it all, and
    double end = 0;
};

class Faults {
public:
    Faults() {
        sound.serve(desktop.session());
        desktop.session().setVariable(u"ORVANTILE_TRACE"_s, tracePath());
        sound.start();
        panel = test::startPanel(desktop.session(), test::PanelHost::xfce);
        desktop.windows().awaitWindow(test::ofClass(u"xfce4-panel"_s), QDeadlineTimer(60s));
        desktop.startOrvantile();
    }

    [[nodiscard]] std::vector<Fault> all() {
        auto& session = desktop.session();
        const auto onSession = [&](const QString& name) {
            return test::SessionBusCalls(session.sessionBusAddress()).ownerOf(name);
        };
        const test::SessionBusCalls accessibility(session.accessibilityBusAddress());
        std::vector<Fault> faults{{u"nothing"_s, [] {}, [] {}}};
        const auto stopped = [&](const QString& part, pid_t process) {
            if (process <= 0) {
                const QString missing = u"there is no "_s + part;
                throw std::runtime_error(missing.toStdString());
            }
            const QString what = part + u" stopped"_s;
            faults.push_back({what, [=] { ::kill(process, SIGSTOP); }, [=] { ::kill(process, SIGCONT); }});
        };
        stopped(u"window manager"_s, session.windowManagerProcess());
        stopped(u"session bus"_s, onSession(u"org.freedesktop.DBus"_s));
        stopped(u"accessibility bus"_s, accessibility.daemon());
        stopped(u"accessibility bus' launcher"_s, onSession(u"org.a11y.Bus"_s));
        stopped(u"accessibility registry"_s, accessibility.ownerOf(u"org.a11y.atspi.Registry"_s));
        stopped(u"panel with the status item"_s, onSession(u"org.kde.StatusNotifierWatcher"_s));
        stopped(u"application in front"_s, desktop.editorProcess());
        faults.push_back({u"sound server stopped"_s, [this] { sound.signal(SIGSTOP); },
                          [this] { sound.signal(SIGCONT); }});
        faults.push_back({u"sound server killed"_s, [this] { sound.kill(); }, [this] { sound.start(); }});
        faults.push_back({u"window manager killed"_s, [&] { session.stopWindowManager(); },
                          [&] { session.startWindowManager(test::WindowManager::openbox); }});
        faults.push_back({u"panel with the status item killed"_s, [this] { panel->signal(SIGKILL); },
                          [this] { panel = test::startPanel(desktop.session(), test::PanelHost::xfce); }});
        return faults;
    }

    Result measure(const Fault& fault, int shots) {
        Result result{.what = fault.what, .begin = now()};
        fault.begin();
        fire(shots, result);
        fault.end();
        const double back = now();
        const QDeadlineTimer deadline(10s);
        while (result.again < 0 && !deadline.hasExpired()) {
            const double taken = shoot(50ms);
            result.again = taken < 0 ? -1 : lastPressed + taken - back;
        }
        Result after{};
        fire(shots, after);
        result.missed += after.missed;
        result.end = now();
        return result;
    }

    /// Ends the program, which writes its record then.
    [[nodiscard]] std::vector<TraceEvent> stop() {
        desktop.stopOrvantile();
        return readTrace(tracePath());
    }

private:
    [[nodiscard]] QString tracePath() { return desktop.session().home() + u"/trace.json"_s; }

    /// Milliseconds until the command of the key is on the screen; negative when it is not in time.
    double shoot(std::chrono::milliseconds time) {
        huds.takeAll();
        lastPressed = now();
        desktop.keys().press(u"Ctrl+A"_s);
        const auto hud = huds.awaitNext(QDeadlineTimer(time));
        const double taken =
            hud ? std::chrono::duration<double, std::milli>(hud->time.time_since_epoch()).count() -
                      lastPressed
                : -1;
        huds.awaitHidden();
        return taken;
    }

    void fire(int shots, Result& result) {
        for (int shot = 0; shot < shots; ++shot) {
            const double taken = shoot(1s);
            if (taken < 0) {
                ++result.missed;
            } else {
                result.named.add(taken);
            }
        }
    }

    test::SoundServer sound;
    EditorDesktop desktop;
    test::HudWatcher huds{desktop.session().display()};
    std::unique_ptr<test::ChildProcess> panel;
    double lastPressed = 0;
};

int run(int shots, const QString& document) {
    Faults faults;
    std::vector<Result> results;
    for (const auto& fault : faults.all()) {
        results.push_back(faults.measure(fault, shots));
        std::fprintf(stderr, "%s\n", qUtf8Printable(fault.what));
    }
    const auto record = faults.stop();
    Report report(u"faults"_s);
    report.table({u"shots"_s, u"key → named, median"_s, u"max"_s, u"not named"_s,
                  u"named again after its return"_s, u"turns of the main loop"_s, u"longer than 5 ms"_s,
                  u"longest"_s});
    for (const auto& result : results) {
        Samples turns;
        int longTurns = 0;
        for (const auto& event : record) {
            if (event.name == u"turn"_s && event.begin >= result.begin && event.begin < result.end) {
                turns.add(event.duration);
                longTurns += event.duration > 5 ? 1 : 0;
            }
        }
        report.row({result.what, QString::number(result.named.count()), shortNumber(result.named.median()),
                    shortNumber(result.named.quantile(1)), QString::number(result.missed),
                    shortNumber(result.again), QString::number(turns.count()), QString::number(longTurns),
                    shortNumber(turns.quantile(1))});
    }
    report.paragraph(u"Load at the end %1."_s.arg(loadNow()));
    report.deliver(document);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using Qt::StringLiterals::operator""_s;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{u"shots"_s, u"Key presses while each part is missing, and again afterwards."_s,
                        u"count"_s, u"20"_s},
                       {u"write"_s, u"Put the table into this document."_s, u"file"_s}});
    parser.addHelpOption();
    parser.process(application);
    try {
        return orvantile::bench::run(parser.value(u"shots"_s).toInt(), parser.value(u"write"_s));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
