#include "platform/linux/x11/StartupNotice.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace orvantile::platform::x11 {

QByteArray endOfStartup(const QByteArray& identifier) {
    auto quoted = identifier;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    return "remove: ID=\"" + quoted + '"';
}

void broadcastStartupText(xcb_connection_t* connection, xcb_window_t root, const Atoms& atoms,
                          const QByteArray& text) {
    // The pieces are told to belong together by the window they name.
    const auto sender = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, sender, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t piece{};
    piece.response_type = XCB_CLIENT_MESSAGE;
    piece.format = 8;
    piece.window = sender;
    piece.type = atoms.startupInfoBegin;
    constexpr qsizetype capacity = sizeof piece.data.data8;
    const auto length = text.size() + 1; // with the closing zero byte
    for (qsizetype start = 0; start < length; start += capacity) {
        piece.data = {};
        std::memcpy(piece.data.data8, text.constData() + start,
                    static_cast<std::size_t>(std::min(capacity, length - start)));
        xcb_send_event(connection, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       std::bit_cast<const char*>(&piece));
        piece.type = atoms.startupInfo;
    }
    xcb_destroy_window(connection, sender);
}

} // namespace orvantile::platform::x11
