// From an injected key to what is seen: the program's panel beside screenkey's window, in one run.

#include "endtoend/EditorDesktop.h"
#include "support/Samples.h"
#include "support/desktop/Screenshot.h"

#include <QElapsedTimer>
#include <cstdio>
#include <cstdlib>
#include <xcb/damage.h>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

/// What one program's window did after a key press; negative while it has not happened.
struct Sighting {
    QString className;
    xcb_window_t window = XCB_NONE;
    bool mapped = false;
    double mappedAfter = -1;
    double pixelAfter = -1;
    QImage before;
    Samples mapping;
    Samples pixels;
};

/// Watches the root for windows of two programs and for changes on the screen.
class Eyes {
public:
    explicit Eyes(const QString& display_) : display(display_), x(display_) {
        x.select(x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        const auto* extension = xcb_get_extension_data(x.get(), &xcb_damage_id);
        damageEvent = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
        xcb_damage_query_version_unchecked(x.get(), 1, 1);
        xcb_damage_create(x.get(), xcb_generate_id(x.get()), x.root(),
                          XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
        x.synchronize();
    }

    /// Waits until `done` holds; false when it does not in time.
    bool await(std::vector<Sighting>& sightings, const std::function<bool()>& done,
               std::chrono::milliseconds time) {
        return x.await(
            done, [&](const auto& event) { handle(event, sightings); }, QDeadlineTimer(time));
    }

    QElapsedTimer clock;
    QRect area; ///< of the screen where the program's panel shows

private:
    [[nodiscard]] double elapsed() const { return static_cast<double>(clock.nsecsElapsed()) / 1e6; }

    void handle(const xcb_generic_event_t& event, std::vector<Sighting>& sightings) {
        const auto type = static_cast<std::uint8_t>(event.response_type & 0x7F);
        if (type == XCB_MAP_NOTIFY || type == XCB_UNMAP_NOTIFY) {
            const double now = elapsed();
            // Both events start with event window and window.
            const auto window = reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
            for (auto& sighting : sightings) {
                if (sighting.window == XCB_NONE && type == XCB_MAP_NOTIFY &&
                    test::lookAt(x, window).className.compare(sighting.className, Qt::CaseInsensitive) == 0) {
                    sighting.window = window;
                }
                if (sighting.window == window) {
                    sighting.mapped = type == XCB_MAP_NOTIFY;
                    if (sighting.mapped && sighting.mappedAfter < 0) {
                        sighting.mappedAfter = now;
                    }
                }
            }
        } else if (type == damageEvent) {
            const double now = elapsed();
            const auto& damaged = reinterpret_cast<const xcb_damage_notify_event_t&>(event).area;
            const QRect rect(damaged.x, damaged.y, damaged.width, damaged.height);
            for (auto& sighting : sightings) {
                if (sighting.pixelAfter < 0 && !sighting.before.isNull() && rect.intersects(area) &&
                    test::takeScreenshot(display, area) != sighting.before) {
                    sighting.pixelAfter = now;
                }
            }
        }
    }

    QString display;
    test::XConnection x;
    std::uint8_t damageEvent = 0;
};

/// Fires Select All once and notes what the windows did.
bool shoot(EditorDesktop& desktop, Eyes& eyes, std::vector<Sighting>& sightings, const QString& display) {
    for (auto& sighting : sightings) {
        sighting.mappedAfter = -1;
        sighting.pixelAfter = -1;
    }
    auto& own = sightings.front();
    own.before = test::takeScreenshot(display, eyes.area);
    desktop.keys().hold(u"Ctrl"_s);
    eyes.clock.restart();
    desktop.keys().press(u"a"_s);
    const bool seen = eyes.await(
        sightings,
        [&] {
            return own.pixelAfter >= 0 &&
                   std::ranges::all_of(sightings, [](const auto& each) { return each.mappedAfter >= 0; });
        },
        2s);
    desktop.keys().release(u"Ctrl"_s);
    const bool hidden = eyes.await(
        sightings, [&] { return std::ranges::none_of(sightings, &Sighting::mapped); }, 5s);
    return seen && hidden;
}

int run(int shots) {
    EditorDesktop desktop;
    const auto display = desktop.session().display();
    Eyes eyes(display);
    eyes.clock.start();
    // The lower half of the screen but its middle column, which only the panel covers.
    eyes.area = QRect(640 - 60, 800 - 24 - 70, 120, 30);
    std::vector<Sighting> sightings(2);
    sightings[0].className = u"orvantile"_s;
    sightings[1].className = u"screenkey"_s;
    desktop.startOrvantile();
    const auto caster = desktop.session().start(
        u"screenkey"_s, {u"--no-systray"_s, u"-t"_s, u"0.3"_s, u"-p"_s, u"top"_s, u"-s"_s, u"small"_s});

    int missed = 0;
    int warm = 0;
    for (int shot = 0; shot < shots + 5; ++shot) {
        if (!shoot(desktop, eyes, sightings, display)) {
            missed += warm > 0 ? 1 : 0;
            continue;
        }
        if (++warm > 5) {
            for (auto& sighting : sightings) {
                sighting.mapping.add(sighting.mappedAfter);
            }
            sightings[0].pixels.add(sightings[0].pixelAfter);
        }
    }
    Samples::printHeader();
    sightings[0].mapping.print(u"key → panel mapped, ms"_s);
    sightings[0].pixels.print(u"key → first changed pixel, ms"_s);
    sightings[1].mapping.print(u"key → screenkey's window mapped, ms"_s);
    std::printf("mapped, ratio to screenkey's median: %.2f; shots without a result: %d\n",
                sightings[0].mapping.median() / std::max(sightings[1].mapping.median(), 1e-9), missed);
    return EXIT_SUCCESS;
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
