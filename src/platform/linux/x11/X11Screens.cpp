#include "platform/linux/x11/X11Screens.h"

#include "platform/linux/x11/Properties.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <bit>
#include <memory>
#include <utility>
#include <xcb/randr.h>

namespace orvantile::platform::x11 {
namespace {

constexpr std::uint32_t mostClients = 4096;
constexpr std::uint32_t mostWorkAreas = 64;

/// The toolkit keeps the position of a screen in pixels whatever its scale.
double scaleAt(const PixelRect& frame) {
    for (const auto* screen : QGuiApplication::screens()) {
        if (screen->geometry().topLeft() == QPoint(frame.x, frame.y)) {
            return screen->devicePixelRatio();
        }
    }
    const auto* primary = QGuiApplication::primaryScreen();
    return primary != nullptr ? primary->devicePixelRatio() : 1;
}

std::vector<PixelRect> rectanglesIn(std::span<const std::uint32_t> values) {
    std::vector<PixelRect> found;
    for (; values.size() >= 4; values = values.subspan(4)) {
        found.push_back({static_cast<int>(values[0]), static_cast<int>(values[1]),
                         static_cast<int>(values[2]), static_cast<int>(values[3])});
    }
    return found;
}

} // namespace

X11Screens::X11Screens(XConnection& connection_, const X11Session& session_)
    : connection(connection_),
      session(session_),
      rootWidth(connection.screen().width_in_pixels),
      rootHeight(connection.screen().height_in_pixels) {
    const auto* randr = xcb_get_extension_data(connection.get(), &xcb_randr_id);
    if (randr != nullptr && randr->present != 0) {
        randrEvents = randr->first_event;
        const Reply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
            connection.get(), xcb_randr_query_version(connection.get(), 1, 5), nullptr));
        hasMonitors = version && std::pair(version->major_version, version->minor_version) >=
                                     std::pair<std::uint32_t, std::uint32_t>(1, 5);
        xcb_randr_select_input(connection.get(), connection.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    }
    connection.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    token = connection.listen([this](const auto& event) { handle(event); });
    askMonitors();
    askWorkAreas();
}

void X11Screens::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    const auto type = event.response_type & withoutSentFlag;
    if (randrEvents != 0 &&
        (type == randrEvents + XCB_RANDR_SCREEN_CHANGE_NOTIFY || type == randrEvents + XCB_RANDR_NOTIFY)) {
        askMonitors();
        askWorkAreas();
    } else if (type == XCB_CONFIGURE_NOTIFY) {
        const auto* change = std::bit_cast<const xcb_configure_notify_event_t*>(&event);
        if (change->window == connection.root()) {
            rootWidth = change->width;
            rootHeight = change->height;
            askMonitors();
        }
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto* change = std::bit_cast<const xcb_property_notify_event_t*>(&event);
        const auto& atoms = connection.atoms();
        if (change->window != connection.root()) {
            return;
        }
        if (change->atom == atoms.workArea || change->atom == atoms.gtkWorkAreas) {
            askWorkAreas();
        } else if (change->atom == atoms.clientList && monitors.size() > 1) {
            askStruts();
        }
    }
}

void X11Screens::askMonitors() {
    if (!hasMonitors) {
        monitors.assign(1, bounds());
        return;
    }
    connection.ask<xcb_randr_get_monitors_reply_t>(
        xcb_randr_get_monitors(connection.get(), connection.root(), 1), [this](const auto* reply) {
            std::vector<PixelRect> found;
            if (reply != nullptr) {
                for (auto each = xcb_randr_get_monitors_monitors_iterator(reply); each.rem > 0;
                     xcb_randr_monitor_info_next(&each)) {
                    const PixelRect frame{each.data->x, each.data->y, each.data->width, each.data->height};
                    if (!frame.isEmpty()) {
                        found.insert(each.data->primary != 0 ? found.begin() : found.end(), frame);
                    }
                }
            }
            // While monitors are exchanged there may be none for a moment.
            if (found.empty()) {
                found.push_back(bounds());
            }
            monitors = std::move(found);
            if (monitors.size() > 1) {
                askStruts();
            }
        });
}

void X11Screens::askWorkAreas() {
    const auto whole = std::make_shared<std::vector<PixelRect>>();
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, connection.root(), connection.atoms().workArea, 4),
        [whole](const auto* reply) { *whole = rectanglesIn(words(reply)); });
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, connection.root(), connection.atoms().gtkWorkAreas, mostWorkAreas),
        [this, whole](const auto* reply) {
            workAreas = rectanglesIn(words(reply));
            if (workAreas.empty()) {
                workAreas = *whole;
            }
        });
    if (monitors.size() > 1) {
        askStruts();
    }
}

void X11Screens::askStruts() {
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, connection.root(), connection.atoms().clientList, mostClients),
        [this](const auto* reply) {
            const auto found = std::make_shared<std::vector<Strut>>();
            const auto clients = words(reply);
            for (const auto window : clients) {
                constexpr std::uint32_t length = sizeof(Strut) / sizeof(std::uint32_t);
                connection.ask<xcb_get_property_reply_t>(
                    requestProperty(connection, window, connection.atoms().strutPartial, length),
                    [found](const auto* answer) {
                        if (const auto v = words(answer); v.size() == length) {
                            found->push_back(
                                {v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9], v[10], v[11]});
                        }
                    });
            }
            // Answers come in the order of the questions: this one is the last.
            connection.ask<xcb_get_geometry_reply_t>(
                xcb_get_geometry(connection.get(), connection.root()),
                [this, found](const auto*) { struts = std::move(*found); });
        });
}

ScreenLayout X11Screens::layout() const {
    std::vector<Monitor> all;
    for (const auto& frame : monitors) {
        Monitor monitor{frame, frame, scaleAt(frame)};
        // The area of the whole desktop says nothing about the inner edges of several monitors.
        const bool perMonitor = workAreas.size() > 1 || monitors.size() == 1;
        if (perMonitor) {
            for (const auto& area : workAreas) {
                if (const auto visible = frame.intersected(area); !visible.isEmpty()) {
                    monitor.visible = visible;
                    break;
                }
            }
        } else {
            for (const auto& strut : struts) {
                reserve(monitor, strut, rootWidth, rootHeight);
            }
        }
        all.push_back(monitor);
    }
    return ScreenLayout(std::move(all));
}

std::optional<std::size_t> X11Screens::mainMonitor(const ScreenLayout& layout) const {
    const auto& active = session.activeFrame();
    return layout.monitorOf(active ? *active : monitors.empty() ? PixelRect{} : monitors.front());
}

bool X11Screens::isFullScreen() const {
    const auto& active = session.activeFrame();
    return active &&
           std::ranges::any_of(monitors, [&](const auto& frame) { return active->contains(frame); });
}

std::optional<Screen> X11Screens::mainScreen() const {
    const auto current = layout();
    if (const auto main = mainMonitor(current)) {
        return current.screen(*main);
    }
    return std::nullopt;
}

std::vector<Screen> X11Screens::screens() const {
    return layout().screens();
}

ScreenLayout::Placement X11Screens::place(const Rect& rect) const {
    const auto current = layout();
    return current.place(rect, mainMonitor(current));
}

} // namespace orvantile::platform::x11
