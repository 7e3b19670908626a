#pragma once

#include "platform/Activation.h"
#include "platform/linux/x11/XConnection.h"

#include <QByteArray>

namespace orvantile::platform::x11 {

/// Asks the window manager, with the server's present time and as a direct wish of the user: a time that the
/// toolkit remembers is that of its own last event, which is older than what the user does elsewhere.
class X11Activation final : public Activation {
public:
    explicit X11Activation(XConnection& connection);
    X11Activation(const X11Activation&) = delete;
    X11Activation& operator=(const X11Activation&) = delete;
    ~X11Activation() override;

    /// Ends the launch, too, that the environment names in DESKTOP_STARTUP_ID.
    void bringToFront(std::uintptr_t window) override;

private:
    void handle(const xcb_generic_event_t& event);
    void ask(xcb_window_t window, xcb_timestamp_t time) const;

    XConnection& connection;
    xcb_window_t clock; ///< changes of its property carry the server's time
    xcb_window_t wanted = XCB_NONE;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
