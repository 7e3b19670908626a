// What the preferences take: the time until the window can be seen, CPU while a slider is dragged, memory.

#include "platform/linux/desktop/FreedMemory.h"
#include "preferences/OpenWindow.h"
#include "preferences/controls/ValueSlider.h"
#include "support/Samples.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/ProcessCost.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QTimer>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <numbers>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr int frameMilliseconds = 17; // 60 a second, rounded to what the loop can wait

/// CPU time of this process so far, all threads, in milliseconds.
double cpuMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Turns the main loop until then, at rest when there is nothing to do.
void turnUntil(const QDeadlineTimer& end) {
    QEventLoop loop;
    QTimer::singleShot(std::chrono::milliseconds(end.remainingTime()), Qt::PreciseTimer, &loop,
                       &QEventLoop::quit);
    loop.exec();
}

/// Prints how long the first opening in this process takes, in wall-clock and CPU milliseconds.
int openOnce() {
    OpenWindow preferences;
    QElapsedTimer clock;
    const double cpu = cpuMilliseconds();
    clock.start();
    preferences.open();
    std::printf("%.3f %.3f\n", static_cast<double>(clock.nsecsElapsed()) / 1e6, cpuMilliseconds() - cpu);
    return EXIT_SUCCESS;
}

int openAgain(int rounds) {
    OpenWindow preferences;
    preferences.open();
    Samples again;
    Samples anew;
    const auto measure = [&](Samples& samples) {
        QElapsedTimer clock;
        clock.start();
        preferences.open();
        samples.add(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    };
    for (int round = 0; round < rounds; ++round) {
        preferences.close();
        measure(again);
        preferences.close();
        preferences.discard();
        measure(anew);
    }
    anew.print(u"opening another window, first paint"_s);
    again.print(u"opening the closed window again, first paint"_s);
    return EXIT_SUCCESS;
}

ValueSlider& sliderCalled(const QWidget& window, const QString& name) {
    for (auto* slider : window.findChildren<QSlider*>()) {
        if (auto* found = dynamic_cast<ValueSlider*>(slider); found && found->accessibleName() == name) {
            return *found;
        }
    }
    throw std::runtime_error("no slider " + name.toStdString());
}

void mouse(QWidget& target, QEvent::Type type, double x) {
    const QPointF place(x, target.height() / 2.0);
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, target.mapToGlobal(place), button,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&target, &event);
}

/// Drags a slider to and fro, a step for each frame.
void drag(OpenWindow& preferences, const QString& name, const QString& title, int frames) {
    auto& slider = sliderCalled(preferences.window(), name);
    const auto placeAt = [&](int frame) {
        const double phase = 2 * std::numbers::pi * frame / 180; // three seconds to and fro
        return slider.width() * (0.5 - 0.4 * std::cos(phase));
    };
    mouse(slider, QEvent::MouseButtonPress, placeAt(0));
    turnUntil(QDeadlineTimer(200));
    Samples costs;
    for (int frame = 1; frame <= frames; ++frame) {
        const QDeadlineTimer end(frameMilliseconds, Qt::PreciseTimer);
        const double before = cpuMilliseconds();
        mouse(slider, QEvent::MouseMove, placeAt(frame));
        turnUntil(end);
        costs.add(cpuMilliseconds() - before);
    }
    mouse(slider, QEvent::MouseButtonRelease, placeAt(frames));
    costs.print(title);
}

int dragSliders(int frames) {
    OpenWindow preferences;
    preferences.open();
    preferences.select(PreferencesTab::hud);
    const auto scale = u"scale %1, "_s.arg(preferences.window().devicePixelRatioF());
    drag(preferences, u"Duration"_s, scale + u"CPU per frame, duration"_s, frames);
    drag(preferences, u"Font size"_s, scale + u"CPU per frame, font size, glass"_s, frames);
    preferences.settings().translucent = false;
    preferences.settings().fontSize = 22;
    drag(preferences, u"Background opacity"_s, scale + u"CPU per frame, opacity"_s, frames);
    drag(preferences, u"Font size"_s, scale + u"CPU per frame, font size, flat"_s, frames);
    return EXIT_SUCCESS;
}

/// Opens the window, shows each tab and closes it again.
void visit(OpenWindow& preferences) {
    preferences.open();
    for (const auto tab : {PreferencesTab::hud, PreferencesTab::sound, PreferencesTab::general}) {
        preferences.select(tab);
    }
    preferences.close();
}

int rememberMemory(int cycles) {
    OpenWindow preferences;
    visit(preferences);
    const auto first = test::memory(getpid());
    for (int cycle = 0; cycle < cycles; ++cycle) {
        visit(preferences);
    }
    const auto last = test::memory(getpid());
    std::printf("opened and closed, all tabs: RSS %.2f MiB, private dirty %.2f MiB\n", first.resident,
                first.privateDirty);
    std::printf("%d times more: RSS %+.2f MiB, private dirty %+.2f MiB\n", cycles,
                last.resident - first.resident, last.privateDirty - first.privateDirty);
    return EXIT_SUCCESS;
}

/// Runs one part in a process of its own and passes on what it prints.
void runPart(test::PrivateSession& session, const QString& part, int count, const QString& scale = u"1"_s) {
    session.setVariable(u"QT_SCALE_FACTOR"_s, scale);
    const auto child = session.start(QCoreApplication::applicationFilePath(), {part, QString::number(count)});
    const QDeadlineTimer deadline(std::chrono::minutes(3));
    while (const auto line = child->awaitLine(deadline)) {
        std::printf("%s\n", line->constData());
        std::fflush(stdout);
    }
    if (child->awaitExit() != EXIT_SUCCESS) {
        throw std::runtime_error(part.toStdString() + " failed: " + child->standardError().toStdString());
    }
}

int runAll(int rounds) {
    test::PrivateSession session({.screen = {1920, 1600}});
    session.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    Samples::printHeader();
    Samples first;
    Samples used;
    for (int round = 0; round < rounds / 5; ++round) {
        const auto child = session.start(QCoreApplication::applicationFilePath(), {u"first"_s, u"1"_s});
        const auto words = child->awaitLine().value_or(QByteArray()).split(' ');
        if (words.size() != 2) {
            throw std::runtime_error("not opened: " + child->standardError().toStdString());
        }
        first.add(words[0].toDouble());
        used.add(words[1].toDouble());
        child->awaitExit();
    }
    first.print(u"opening the window, fresh process, first paint"_s);
    used.print(u"… CPU"_s);
    runPart(session, u"again"_s, rounds);
    runPart(session, u"drag"_s, 3 * rounds);
    runPart(session, u"drag"_s, 3 * rounds, u"2"_s);
    runPart(session, u"memory"_s, 100);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using namespace orvantile::bench;
    try {
        if (argc < 3) {
            const QCoreApplication app(argc, argv);
            return runAll(argc > 1 ? std::atoi(argv[1]) : 100);
        }
        const std::string_view part(argv[1]);
        const int count = std::atoi(argv[2]);
        orvantile::platform::desktop::returnFreedMemory(); // as the program does
        const QApplication app(argc, argv);
        return part == "first"    ? openOnce()
               : part == "again"  ? openAgain(count)
               : part == "drag"   ? dragSliders(count)
               : part == "memory" ? rememberMemory(count)
                                  : EXIT_FAILURE;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
