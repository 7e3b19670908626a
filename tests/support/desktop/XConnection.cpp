#include "support/desktop/XConnection.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace orvantile::test {
namespace {

constexpr std::uint32_t longestProperty = 1U << 20U;

} // namespace

XConnection::XConnection(const QString& display) {
    int preferred = 0;
    connection = xcb_connect(display.toLatin1().constData(), &preferred);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        throw std::runtime_error("no X server at " + display.toStdString());
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; preferred > 0 && screens.rem > 1; --preferred) {
        xcb_screen_next(&screens);
    }
    screen = screens.data;
}

XConnection::~XConnection() {
    xcb_disconnect(connection);
}

xcb_atom_t XConnection::atom(const char* name) const {
    auto [place, isNew] = atoms.try_emplace(name, xcb_atom_t{XCB_ATOM_NONE});
    if (isNew) {
        const auto length = static_cast<std::uint16_t>(std::strlen(name));
        const XReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, length, name), nullptr));
        place->second = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    return place->second;
}

void XConnection::select(xcb_window_t window, std::uint32_t eventMask) const {
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &eventMask);
    xcb_flush(connection);
}

std::vector<std::uint32_t> XConnection::numbers(xcb_window_t window, const char* property) const {
    const QByteArray raw = bytes(window, property);
    std::vector<std::uint32_t> values(static_cast<std::size_t>(raw.size()) / sizeof(std::uint32_t));
    if (!values.empty()) {
        std::memcpy(values.data(), raw.constData(), values.size() * sizeof(std::uint32_t));
    }
    return values;
}

QByteArray XConnection::bytes(xcb_window_t window, const char* property) const {
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection,
                               xcb_get_property(connection, 0, window, atom(property),
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty),
                               nullptr));
    if (!reply) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

bool XConnection::await(const std::function<bool()>& done, const EventHandler& handler,
                        const QDeadlineTimer& deadline) const {
    for (;;) {
        passOn(handler);
        if (done()) {
            return true;
        }
        // Asking may have read further events into the queue.
        if (passOn(handler)) {
            continue;
        }
        xcb_flush(connection);
        if (xcb_connection_has_error(connection) != 0 ||
            !awaitReadable(xcb_get_file_descriptor(connection), deadline)) {
            return false;
        }
    }
}

void XConnection::drain(const EventHandler& handler) const {
    synchronize();
    passOn(handler);
}

void XConnection::synchronize() const {
    const XReply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

bool XConnection::passOn(const EventHandler& handler) const {
    bool any = false;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
        any = true;
        if (handler) {
            handler(*event);
        }
    }
    return any;
}

} // namespace orvantile::test
