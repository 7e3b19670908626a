#include "endtoend/Eyes.h"

#include "endtoend/Keys.h"
#include "support/desktop/Window.h"

#include <algorithm>
#include <chrono>
#include <xcb/damage.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::bench {
namespace {

using namespace std::chrono_literals;

} // namespace

Eyes::Eyes(const QString& display)
    : x(display),
      control(keyOf(x, XKB_KEY_Control_L)),
      letter(keyOf(x, XKB_KEY_a)) {
    x.select(x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    const auto* extension = xcb_get_extension_data(x.get(), &xcb_damage_id);
    damageEvent = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    xcb_damage_query_version_unchecked(x.get(), 1, 1);
    xcb_damage_create(x.get(), xcb_generate_id(x.get()), x.root(), XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    x.synchronize();
    clock.start();
}

void Eyes::paintDesktop() const {
    constexpr std::uint32_t colour = 0x8fa8c0;
    xcb_change_window_attributes(x.get(), x.root(), XCB_CW_BACK_PIXEL, &colour);
    xcb_clear_area(x.get(), 0, x.root(), 0, 0, 0, 0);
    x.synchronize();
}

void Eyes::watch(const QString& className) {
    wanted = className;
    window = XCB_NONE;
    probe = {};
    isMapped = false;
}

double Eyes::elapsed() const {
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

void Eyes::send(std::uint8_t type, std::uint8_t code) const {
    xcb_test_fake_input(x.get(), type, code, XCB_CURRENT_TIME, x.root(), 0, 0, 0);
}

std::vector<std::uint32_t> Eyes::pixels() const {
    if (probe.isEmpty()) {
        return {};
    }
    const test::XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        x.get(),
        xcb_get_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x.root(), static_cast<std::int16_t>(probe.x()),
                      static_cast<std::int16_t>(probe.y()), static_cast<std::uint16_t>(probe.width()),
                      static_cast<std::uint16_t>(probe.height()), 0xffffffff),
        nullptr));
    if (!image) {
        return {};
    }
    const auto* first = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
    std::vector<std::uint32_t> colours(first, first + xcb_get_image_data_length(image.get()) / 4);
    // Windows with an alpha channel leave traces in the fourth byte that nobody sees.
    std::ranges::for_each(colours, [](std::uint32_t& colour) { colour &= 0xffffffU; });
    return colours;
}

Eyes::Sighting Eyes::shoot() {
    const auto listener = [this](const auto& event) { handle(event); };
    x.drain(listener);
    before = pixels();
    sighting = {};
    touched = -1;
    send(XCB_KEY_PRESS, control);
    x.synchronize();
    clock.restart();
    pressed = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
                  .count();
    send(XCB_KEY_PRESS, letter);
    xcb_flush(x.get());
    const auto seen = [this] {
        if (touched >= 0) {
            lookForChange(std::exchange(touched, -1));
        }
        return sighting.mapped >= 0 && (sighting.changed >= 0 || probe.isEmpty());
    };
    const bool shown = x.await(seen, listener, QDeadlineTimer(1s));
    send(XCB_KEY_RELEASE, letter);
    send(XCB_KEY_RELEASE, control);
    xcb_flush(x.get());
    const auto result = sighting;
    const bool gone = x.await([this] { return !isMapped; }, listener, QDeadlineTimer(5s));
    return shown && gone ? result : Sighting{};
}

void Eyes::lookForChange(double time) {
    if (sighting.changed < 0 && !before.empty() && pixels() != before) {
        sighting.changed = time;
    }
}

void Eyes::handle(const xcb_generic_event_t& event) {
    const double now = elapsed();
    const auto type = static_cast<std::uint8_t>(event.response_type & 0x7F);
    if (type == damageEvent) {
        const auto& area = reinterpret_cast<const xcb_damage_notify_event_t&>(event).area;
        if (touched < 0 && sighting.changed < 0 &&
            probe.intersects(QRect(area.x, area.y, area.width, area.height))) {
            touched = now;
        }
        return;
    }
    if (type != XCB_MAP_NOTIFY && type != XCB_UNMAP_NOTIFY) {
        return;
    }
    // Both events start with event window and window.
    const auto changed = reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
    if (window == XCB_NONE && type == XCB_MAP_NOTIFY) {
        const auto seen = test::lookAt(x, changed);
        if (seen.overrideRedirect && seen.className.compare(wanted, Qt::CaseInsensitive) == 0) {
            window = changed;
            // The first sight only tells where to look.
            constexpr QSize few(64, 16);
            probe = QRect(seen.frame.center() - QPoint(few.width() / 2, few.height() / 2), few);
        }
    }
    if (changed == window) {
        isMapped = type == XCB_MAP_NOTIFY;
        if (isMapped && sighting.mapped < 0) {
            sighting.mapped = now;
        }
    }
}

} // namespace orvantile::bench
