// From asking for a HUD until its first picture is handed to a compositor, and until the compositor has it on
// the screen by its own account.

#include "hud/HUDController.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/wayland/WaylandBackdrop.h"
#include "platform/linux/wayland/WaylandPanels.h"
#include "platform/null/NullPlatform.h"
#include "support/Samples.h"
#include "support/wayland/PrivateWaylandSession.h"
#include "wayland/CommitWatch.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using platform::wayland::Globals;
using platform::wayland::Outputs;

double now() {
    using Milliseconds = std::chrono::duration<double, std::milli>;
    return Milliseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Asks the compositor to tell when it has drawn the first picture after `arm`. Compositors without hardware
/// do not answer the protocol for presentation times, so that the callback that comes with each refresh has
/// to do. Times are in milliseconds.
class FirstPicture final : private CommitWatch {
public:
    FirstPicture() = default;
    FirstPicture(const FirstPicture&) = delete;
    FirstPicture& operator=(const FirstPicture&) = delete;
    ~FirstPicture() override = default;

    /// Begins a shot; returns the time.
    double arm() {
        expected = 2; // the surface is asked for first, without a picture
        handed.reset();
        drawn.reset();
        return now();
    }

    std::optional<double> handed; ///< to the compositor
    std::optional<double> drawn;  ///< by it

private:
    void commits(wl_surface* surface) override {
        if (expected == 0 || --expected > 0) {
            return;
        }
        static constexpr wl_callback_listener listener{
            .done = [](void* data, wl_callback* callback, std::uint32_t) {
                static_cast<FirstPicture*>(data)->drawn = now();
                wl_callback_destroy(callback);
            }};
        wl_callback_add_listener(wl_surface_frame(surface), &listener, this);
        handed = now();
    }

    int expected = 0;
};

void turnUntil(const std::function<bool()>& done) {
    const QDeadlineTimer deadline(10'000);
    while (!done()) {
        if (deadline.hasExpired()) {
            throw std::runtime_error("nothing is shown");
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
    }
}

class Bench {
public:
    Bench() {
        made->scheduler = std::make_unique<platform::desktop::QtScheduler>();
        made->screens = std::make_unique<platform::wayland::WaylandScreens>(outputs, focused);
        made->backdrop = std::make_unique<platform::wayland::WaylandBackdrop>(globals);
        made->panels = std::make_unique<platform::wayland::WaylandPanels>(*connection, globals, outputs,
                                                                          *made->scheduler, screens);
        settings.soundEnabled = false;
        settings.appearance = HUDAppearance::light;
        settings.displaySeconds = 0.1; // and 0.22 s of fading
    }

    void run(int shots, bool glass) {
        settings.translucent = glass;
        Samples handed;
        Samples drawn;
        for (int shot = 0; shot < shots; ++shot) {
            const double begin = picture.arm();
            controller->show(u"⌃⇧V  Paste Without Formatting %1"_s.arg(shot % 10));
            turnUntil([this] { return picture.drawn.has_value(); });
            handed.add(*picture.handed - begin);
            drawn.add(*picture.drawn - begin);
            rest(shot);
        }
        const QString look = glass ? u"glass"_s : u"flat"_s;
        handed.print(u"show → picture handed over, "_s + look);
        drawn.print(u"show → drawn by the compositor, "_s + look);
    }

private:
    /// Until the panel has long gone, and for another part of a refresh each time.
    static void rest(int shot) {
        const QDeadlineTimer pause(400 + (shot * 7) % 17);
        while (!pause.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents,
                                            static_cast<int>(std::max<qint64>(pause.remainingTime(), 1)));
        }
    }

    std::unique_ptr<platform::wayland::WaylandConnection> connection =
        platform::wayland::WaylandConnection::open();
    Globals globals{*connection};
    Outputs outputs{*connection, globals};
    platform::wayland::FocusedOutput focused{globals, outputs};
    platform::wayland::WaylandScreens screens{outputs, focused};
    std::unique_ptr<platform::Platform> made = platform::makeNullPlatform();
    Settings settings{*made->defaults};
    std::shared_ptr<HUDController> controller = std::make_shared<HUDController>(*made, settings);
    FirstPicture picture;
};

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        const orvantile::test::PrivateWaylandSession session({.sessionBus = false});
        session.enter();
        qputenv("QT_QPA_PLATFORM", "offscreen"); // the panel needs none of the toolkit's windows
        const int shots = argc > 1 ? std::atoi(argv[1]) : 100;
        const QApplication app(argc, argv);
        orvantile::bench::Bench bench;
        orvantile::bench::Samples::printHeader();
        bench.run(shots, true);
        bench.run(shots, false);
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
