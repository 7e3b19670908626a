// What the helper costs the program it lives in: from a key press to the action, with and without it, in
// turns.

#include "support/Samples.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/WindowWatcher.h"

#include <QTextStream>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

double monotonicMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

QString menuApplication(int version) {
    return QStringLiteral(ORVANTILE_MENU_APPLICATION) + QString::number(version);
}

/// Programs that are started from now on load the helper, or do not.
void loadHelper(test::PrivateSession& session, bool on) {
    session.setVariable(u"QT_PLUGIN_PATH"_s,
                        QStringLiteral(ORVANTILE_HELPERS "/qt5:" ORVANTILE_HELPERS "/qt6"));
    session.setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, on ? u"orvantile"_s : QString());
}

/// A desktop with keys.
struct Desktop {
    Desktop() : injector(session.display()), watcher(session.display()) {
        session.writeFile(u".config/orvantile/orvantile.ini"_s, "displaySeconds=0.4\nsoundEnabled=false\n");
    }

    void startOrvantile() {
        loadHelper(session, false);
        product = session.start(QStringLiteral(ORVANTILE_EXECUTABLE));
        watcher.close(watcher.awaitWindow(test::titled(u"Orvantile Preferences"_s)).handle);
    }

    test::PrivateSession session;
    test::KeyInjector injector;
    test::WindowWatcher watcher;
    std::unique_ptr<test::ChildProcess> product;
};

/// One copy of the program with menus on the desktop.
class Host {
public:
    Host(Desktop& desktop_, int version, bool helper) : desktop(desktop_) {
        loadHelper(desktop.session, helper);
        process = desktop.session.start(menuApplication(version));
        window = desktop.watcher.awaitActive(test::ofProcess(process->processIdentifier()));
        process->awaitLine(); // ready
    }

    /// Milliseconds from a key press to the action, so many times.
    void measure(int presses, Samples& samples) {
        desktop.watcher.activate(window.handle);
        desktop.injector.hold(u"Ctrl"_s);
        for (int press = 0; press < presses; ++press) {
            const double before = monotonicMilliseconds();
            desktop.injector.press(u"n"_s);
            const auto line = process->awaitLine();
            if (line && line->endsWith("&New")) {
                samples.add(line->left(line->indexOf(' ')).toDouble() / 1e6 - before);
            }
        }
        desktop.injector.release(u"Ctrl"_s);
    }

private:
    Desktop& desktop;
    std::unique_ptr<test::ChildProcess> process;
    test::Window window;
};

/// Both copies on one desktop, in turns. Which is started first matters, so each is once.
void measureBoth(int version, int rounds, bool receiver, bool helperFirst, Samples& plain, Samples& helped) {
    Desktop desktop;
    if (receiver) {
        desktop.startOrvantile();
    }
    Host first(desktop, version, helperFirst);
    Host second(desktop, version, !helperFirst);
    auto& with = helperFirst ? first : second;
    auto& without = helperFirst ? second : first;
    constexpr int pressesPerTurn = 20;
    Samples discarded;
    without.measure(pressesPerTurn, discarded);
    with.measure(pressesPerTurn, discarded);
    for (int round = 0; round < rounds; ++round) {
        without.measure(pressesPerTurn, plain);
        with.measure(pressesPerTurn, helped);
    }
}

void compare(int version, int rounds, bool receiver) {
    Samples plain;
    Samples helped;
    for (const bool helperFirst : {false, true}) {
        measureBoth(version, rounds, receiver, helperFirst, plain, helped);
    }
    const auto title = u"Qt %1, receiver %2: key → action "_s.arg(version).arg(receiver ? u"on"_s : u"off"_s);
    plain.print(title + u"without helper, ms"_s);
    helped.print(title + u"with helper, ms"_s);
    std::printf("median difference %+.1f µs, %+.2f %%\n", (helped.median() - plain.median()) * 1e3,
                (helped.median() / plain.median() - 1) * 100);
    std::fflush(stdout);
}

/// The same without a screen and without anything else that varies: the program presses its own keys.
double ownPresses(test::PrivateSession& session, int version, bool helper) {
    loadHelper(session, helper);
    const auto process = session.start(menuApplication(version), {u"--fire"_s, u"20000"_s});
    process->awaitLine();
    const auto done = process->awaitLine(QDeadlineTimer(60'000));
    return done ? done->mid(done->lastIndexOf(' ') + 1).toDouble() / 1e3 : 0;
}

void compareOwnPresses(int version) {
    test::PrivateSession session(
        {.windowManager = test::WindowManager::none, .sessionBus = false, .accessibility = false});
    session.setVariable(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    Samples plain;
    Samples helped;
    for (int round = 0; round < 7; ++round) {
        plain.add(ownPresses(session, version, false));
        helped.add(ownPresses(session, version, true));
    }
    std::printf("Qt %d, processor time of a press, no receiver: %.2f µs without, %.2f µs with the helper, "
                "%+.2f µs each\n",
                version, plain.median(), helped.median(), helped.median() - plain.median());
    std::fflush(stdout);
}

void run(int rounds) {
    Samples::printHeader();
    for (const int version : {ORVANTILE_QT_VERSIONS}) {
        compareOwnPresses(version);
        compare(version, rounds, false);
        compare(version, rounds, true);
    }
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        orvantile::bench::run(argc > 1 ? std::atoi(argv[1]) : 50);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
