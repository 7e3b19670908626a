// From asking for a HUD to its first picture on the screen of a real X server, the grab and blur of what lies
// behind, and what ten thousand HUDs leave in memory.

#include "hud/HUDController.h"
#include "hud/VisualEffectBackground.h"
#include "platform/linux/X11Platform.h"
#include "platform/linux/desktop/FreedMemory.h"
#include "support/Samples.h"
#include "support/desktop/HudWatcher.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/ProcessCost.h"

#include "platform/linux/desktop/IniDefaults.h"
#include "platform/null/NullPlatform.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>
#include <QTemporaryDir>
#include <QWidget>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;

/// A window that fills the screen with something to blur.
class Ground final : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        constexpr int cell = 24;
        for (int y = 0; y < height(); y += cell) {
            for (int x = 0; x < width(); x += cell) {
                painter.fillRect(x, y, cell, cell, QColor::fromHsv((x * 7 + y * 13) % 360, 160, 220));
            }
        }
    }
};

class Bench {
public:
    Bench() : huds(qEnvironmentVariable("DISPLAY")) {
        auto made = platform::makeX11Platform();
        made->defaults = std::make_unique<platform::desktop::IniDefaults>(
            folder.filePath(u"orvantile.ini"_s).toStdString());
        platform::Platform::install(std::move(made));
        platform = &platform::Platform::current();
        settings.emplace(*platform->defaults);
        settings->soundEnabled = false;
        controller = std::make_shared<HUDController>(*platform, *settings);
        ground.showFullScreen();
        const QDeadlineTimer settled(500);
        while (!settled.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
        }
    }

    void run(int rounds) {
        for (const bool glass : {true, false}) {
            settings->translucent = glass;
            measureShow(rounds, glass ? u"glass"_s : u"flat"_s);
        }
        for (const auto& size : {platform::Size{420, 110}, platform::Size{900, 250}}) {
            measureBackdrop(size, rounds);
        }
        settings->translucent = true;
        remember(10 * rounds);
    }

private:
    static QString label(int number) { return u"⌃⇧V  Paste Without Formatting %1"_s.arg(number % 10); }

    /// Between two HUDs the panel has gone and the windows below are drawn again.
    static void rest() {
        const QDeadlineTimer pause(5);
        while (!pause.hasExpired()) {
            QCoreApplication::processEvents();
        }
    }

    void measureShow(int rounds, const QString& look) {
        Samples mapped;
        for (int round = 0; round < rounds; ++round) {
            settings->displaySeconds = 0.01;
            const auto start = std::chrono::steady_clock::now();
            controller->show(label(round));
            const auto shown = huds.awaitNext();
            if (!shown) {
                throw std::runtime_error("no HUD");
            }
            mapped.add(std::chrono::duration<double, std::milli>(shown->time - start).count());
            while (huds.isVisible()) {
                QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
                static_cast<void>(huds.takeAll());
            }
            rest();
        }
        mapped.print(u"show → first picture on the screen, %1, scale %2"_s.arg(look).arg(scale()));
    }

    void measureBackdrop(const platform::Size& size, int rounds) {
        Samples grabbing;
        Samples blurring;
        for (int round = 0; round < rounds; ++round) {
            // Another place each time, so that none is answered from memory.
            const platform::Rect rect{20.0 + 2 * (round % 2), 20, size.width, size.height};
            QElapsedTimer clock;
            clock.start();
            const auto behind = platform->backdrop->behind(rect);
            grabbing.add(static_cast<double>(clock.nsecsElapsed()) / 1e6);
            clock.restart();
            static_cast<void>(VisualEffectBackground::blurred(behind, scale()));
            blurring.add(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        }
        const auto what = u"%1 × %2 points at scale %3"_s.arg(size.width).arg(size.height).arg(scale());
        grabbing.print(u"grab, "_s + what);
        blurring.print(u"blur, "_s + what);
    }

    void remember(int shows) {
        const auto many = [&](int count) {
            for (int round = 0; round < count; ++round) {
                controller->show(label(round));
                QCoreApplication::processEvents();
                if (round % 50 == 0) {
                    static_cast<void>(huds.takeAll());
                }
            }
        };
        many(200);
        const double before = test::memory(::getpid()).resident;
        many(shows);
        std::printf("RSS before and after %d shows, scale %g: %.1f and %.1f MiB\n", shows, scale(), before,
                    test::memory(::getpid()).resident);
    }

    static double scale() { return qApp->devicePixelRatio(); }

    QTemporaryDir folder;
    platform::Platform* platform = nullptr;
    std::optional<Settings> settings;
    std::shared_ptr<HUDController> controller;
    test::HudWatcher huds;
    Ground ground;
};

/// Runs this program once more inside a private session, at a scale.
void runAt(double scale, int rounds) {
    test::PrivateSession session({.screen = {2560, 1440}});
    session.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    session.setVariable(u"QT_SCALE_FACTOR"_s, QString::number(scale));
    const auto child =
        session.start(QCoreApplication::applicationFilePath(), {QString::number(rounds), u"inside"_s});
    const QDeadlineTimer deadline(std::chrono::minutes(10));
    while (const auto line = child->awaitLine(deadline)) {
        std::printf("%s\n", line->constData());
        std::fflush(stdout);
    }
    if (child->awaitExit() != EXIT_SUCCESS) {
        throw std::runtime_error(child->standardError().toStdString());
    }
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    using namespace orvantile::bench;
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 1000;
    try {
        if (argc > 2) {
            orvantile::platform::desktop::returnFreedMemory(); // as the program does
            const QApplication app(argc, argv);
            Bench().run(rounds);
            return EXIT_SUCCESS;
        }
        const QCoreApplication app(argc, argv);
        Samples::printHeader();
        for (const double scale : {1.0, 2.0}) {
            runAt(scale, rounds);
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
