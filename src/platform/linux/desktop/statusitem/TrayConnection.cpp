#include "platform/linux/desktop/statusitem/TrayConnection.h"

#include <utility>

namespace orvantile::platform::desktop {

std::unique_ptr<TrayConnection> TrayConnection::open() {
    int screenNumber = 0;
    std::unique_ptr<xcb_connection_t, CloseXConnection> connection(xcb_connect(nullptr, &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0) {
        return nullptr;
    }
    return std::make_unique<TrayConnection>(std::move(connection), screenNumber);
}

TrayConnection::TrayConnection(std::unique_ptr<xcb_connection_t, CloseXConnection> connection_,
                               int screenNumber_)
    : connection(std::move(connection_)),
      number(screenNumber_) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(get()));
    for (int index = 0; index < number && screens.rem > 1; ++index) {
        xcb_screen_next(&screens);
    }
    rootScreen = screens.data;
    readable = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(get()), QSocketNotifier::Read);
    QObject::connect(readable.get(), &QSocketNotifier::activated, readable.get(), [this] { turn(); });
}

xcb_atom_t TrayConnection::atom(const std::string& name) const {
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        get(), xcb_intern_atom(get(), 0, static_cast<std::uint16_t>(name.size()), name.c_str()), nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void TrayConnection::flush() {
    xcb_flush(get());
    if (!std::exchange(turnPending, true)) {
        QMetaObject::invokeMethod(
            readable.get(), [this] { turn(); }, Qt::QueuedConnection);
    }
}

void TrayConnection::turn() {
    turnPending = false;
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(get())}) {
        if (onEvent) {
            onEvent(*event);
        }
    }
    if (xcb_connection_has_error(get()) != 0) {
        readable->setEnabled(false);
    }
}

} // namespace orvantile::platform::desktop
