#include "endtoend/Burst.h"

#include "endtoend/Keys.h"
#include "support/desktop/Window.h"

#include <poll.h>
#include <stdexcept>
#include <xcb/damage.h>
#include <xcb/xcbext.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::bench {
namespace {

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace

Burst::Burst(const QString& display) : x(display), control(keyOf(x, XKB_KEY_Control_L)) {
    x.select(x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    for (const auto window : test::rootChildren(x)) {
        const auto known = test::lookAt(x, window);
        if (known.overrideRedirect && known.className == u"orvantile") {
            panel = window;
            x.select(panel, XCB_EVENT_MASK_PROPERTY_CHANGE);
        }
    }
    if (panel == XCB_NONE) {
        throw std::runtime_error("the program has no panel");
    }
    const auto* extension = xcb_get_extension_data(x.get(), &xcb_damage_id);
    damageEvent = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    xcb_damage_query_version_unchecked(x.get(), 1, 1);
    xcb_damage_create(x.get(), xcb_generate_id(x.get()), panel, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    static_cast<void>(x.atom("_NET_WM_NAME"));
    x.synchronize();
}

double Burst::now() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

void Burst::press(std::uint8_t code) const {
    for (const std::uint8_t type : {std::uint8_t{XCB_KEY_PRESS}, std::uint8_t{XCB_KEY_RELEASE}}) {
        xcb_test_fake_input(x.get(), type, code, XCB_CURRENT_TIME, x.root(), 0, 0, 0);
    }
    xcb_flush(x.get());
}

void Burst::run(const std::vector<Key>& keys, double perSecond, std::chrono::seconds time) {
    std::vector<std::uint8_t> codes;
    for (const auto& key : keys) {
        codes.push_back(keyOf(x, key.symbol));
    }
    const auto count = static_cast<std::size_t>(perSecond * static_cast<double>(time.count()));
    pressed.reserve(count);
    seen.reserve(2 * count);
    xcb_test_fake_input(x.get(), XCB_KEY_PRESS, control, XCB_CURRENT_TIME, x.root(), 0, 0, 0);
    x.synchronize();
    start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < count; ++i) {
        constexpr double milliseconds = 1000;
        awaitEvents(static_cast<double>(i) * milliseconds / perSecond);
        pressed.push_back({now(), keys[i % keys.size()].label});
        press(codes[i % codes.size()]);
    }
    xcb_test_fake_input(x.get(), XCB_KEY_RELEASE, control, XCB_CURRENT_TIME, x.root(), 0, 0, 0);
    xcb_flush(x.get());
    x.await([this] { return !mapped; }, [this](const auto& event) { handle(event); },
            QDeadlineTimer(test::patience));
    x.synchronize();
    readLabels();
}

void Burst::awaitEvents(double until) {
    for (;;) {
        while (const test::XReply<xcb_generic_event_t> event{xcb_poll_for_event(x.get())}) {
            handle(*event);
        }
        readLabels();
        const double left = until - now();
        if (left <= 0) {
            return;
        }
        pollfd waiting{.fd = xcb_get_file_descriptor(x.get()), .events = POLLIN, .revents = 0};
        const timespec timeout{.tv_sec = 0, .tv_nsec = static_cast<long>(left * 1e6)};
        ppoll(&waiting, 1, &timeout, nullptr);
    }
}

void Burst::readLabels() {
    while (!questions.empty()) {
        void* reply = nullptr;
        if (xcb_poll_for_reply(x.get(), questions.front().cookie.sequence, &reply, nullptr) == 0) {
            return;
        }
        const test::XReply<xcb_get_property_reply_t> answer(static_cast<xcb_get_property_reply_t*>(reply));
        if (answer) {
            seen[questions.front().sight].label =
                QString::fromUtf8(static_cast<const char*>(xcb_get_property_value(answer.get())),
                                  xcb_get_property_value_length(answer.get()));
        }
        questions.pop_front();
    }
}

void Burst::handle(const xcb_generic_event_t& event) {
    const double time = now();
    const auto type = static_cast<std::uint8_t>(event.response_type & 0x7F);
    if (type == damageEvent) {
        if (!seen.empty() && seen.back().pictured < 0) {
            seen.back().pictured = time;
        }
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = as<xcb_property_notify_event_t>(event);
        if (change.window == panel && change.atom == x.atom("_NET_WM_NAME")) {
            constexpr std::uint32_t longest = 256; // words
            questions.push_back(
                {xcb_get_property(x.get(), 0, panel, change.atom, XCB_GET_PROPERTY_TYPE_ANY, 0, longest),
                 seen.size()});
            xcb_flush(x.get());
            seen.push_back({.labelled = time, .label = {}});
        }
    } else if (type == XCB_MAP_NOTIFY && as<xcb_map_notify_event_t>(event).window == panel) {
        mapped = true;
    } else if (type == XCB_UNMAP_NOTIFY && as<xcb_unmap_notify_event_t>(event).window == panel) {
        mapped = false;
    }
}

} // namespace orvantile::bench
