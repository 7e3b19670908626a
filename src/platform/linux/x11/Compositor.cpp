#include "platform/linux/x11/Compositor.h"

#include "platform/linux/x11/Properties.h"

#include <bit>
#include <utility>
#include <xcb/xfixes.h>

namespace orvantile::platform::x11 {

Compositor::Compositor(XConnection& connection_) : connection(connection_) {
    const auto selection = connection.atoms().compositor;
    const auto* fixes = xcb_get_extension_data(connection.get(), &xcb_xfixes_id);
    if (fixes != nullptr && fixes->present != 0) {
        selectionEvent = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
        // The server serves no request of the extension before this one.
        connection.ask<xcb_xfixes_query_version_reply_t>(
            xcb_xfixes_query_version(connection.get(), XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
            [](const auto*) {});
        xcb_xfixes_select_selection_input(connection.get(), connection.root(), selection,
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    connection.selectRootEvents(XCB_EVENT_MASK_PROPERTY_CHANGE);
    token = connection.listen([this](const auto& event) { handle(event); });
    connection.ask<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection.get(), selection),
        [this](const auto* reply) { setRunning(reply != nullptr && reply->owner != XCB_WINDOW_NONE); });
    askBlur();
}

void Compositor::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    const auto type = event.response_type & withoutSentFlag;
    if (selectionEvent != 0 && type == selectionEvent) {
        const auto* change = std::bit_cast<const xcb_xfixes_selection_notify_event_t*>(&event);
        if (change->selection == connection.atoms().compositor) {
            setRunning(change->owner != XCB_WINDOW_NONE);
        }
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto* change = std::bit_cast<const xcb_property_notify_event_t*>(&event);
        if (change->window == connection.root() && change->atom == connection.atoms().blurBehind) {
            askBlur();
        }
    }
}

void Compositor::setRunning(bool nowRunning) {
    if (std::exchange(running, nowRunning) != nowRunning && onChanged) {
        onChanged();
    }
}

void Compositor::askBlur() {
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, connection.root(), connection.atoms().blurBehind, 0),
        [this](const auto* reply) { offersBlur = reply != nullptr && reply->type != XCB_ATOM_NONE; });
}

} // namespace orvantile::platform::x11
