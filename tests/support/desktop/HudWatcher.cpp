#include "support/desktop/HudWatcher.h"

#include <algorithm>
#include <utility>

namespace orvantile::test {
namespace {

constexpr std::uint8_t eventTypeMask = 0x7f;

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

} // namespace

HudWatcher::HudWatcher(const QString& display) : x(display) {
    x.select(x.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    for (const xcb_window_t window : rootChildren(x)) {
        consider(window);
    }
    x.synchronize();
}

std::optional<ShownHud> HudWatcher::awaitNext(QDeadlineTimer deadline) {
    const auto handler = [this](const auto& event) { handle(event); };
    if (!x.await([this] { return !shown.empty(); }, handler, deadline)) {
        return std::nullopt;
    }
    ShownHud next = std::move(shown.front());
    shown.pop_front();
    return next;
}

bool HudWatcher::awaitHidden(QDeadlineTimer deadline) {
    x.drain([this](const auto& event) { handle(event); });
    return x.await([this] { return !isVisible(); }, [this](const auto& event) { handle(event); }, deadline);
}

std::deque<ShownHud> HudWatcher::takeAll() {
    x.drain([this](const auto& event) { handle(event); });
    return std::exchange(shown, {});
}

bool HudWatcher::isVisible() const {
    return std::ranges::any_of(panels, [](const auto& panel) { return panel.second; });
}

void HudWatcher::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & eventTypeMask) {
    case XCB_CREATE_NOTIFY:
        x.select(as<xcb_create_notify_event_t>(event).window, XCB_EVENT_MASK_PROPERTY_CHANGE);
        break;
    case XCB_MAP_NOTIFY:
        if (const auto& map = as<xcb_map_notify_event_t>(event); map.override_redirect != 0) {
            consider(map.window);
            if (panels.contains(map.window)) {
                panels[map.window] = true;
                record(map.window);
            }
        }
        break;
    case XCB_UNMAP_NOTIFY:
        if (const auto panel = panels.find(as<xcb_unmap_notify_event_t>(event).window);
            panel != panels.end()) {
            panel->second = false;
        }
        break;
    case XCB_DESTROY_NOTIFY:
        panels.erase(as<xcb_destroy_notify_event_t>(event).window);
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = as<xcb_property_notify_event_t>(event);
        const auto panel = panels.find(change.window);
        if (panel != panels.end() && panel->second && change.atom == x.atom("_NET_WM_NAME")) {
            record(change.window);
        }
        break;
    }
    default:
        break;
    }
}

void HudWatcher::consider(xcb_window_t window) {
    const Window seen = lookAt(x, window);
    if (seen.overrideRedirect && seen.className == u"orvantile" && !panels.contains(window)) {
        x.select(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
        panels[window] = seen.mapped;
    }
}

void HudWatcher::record(xcb_window_t window) {
    const Window seen = lookAt(x, window);
    shown.push_back({seen.title, seen.frame, std::chrono::steady_clock::now()});
}

} // namespace orvantile::test
