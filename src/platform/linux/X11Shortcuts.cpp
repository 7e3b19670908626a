#include "platform/linux/X11Shortcuts.h"

#include "platform/linux/x11/StartupIdentifier.h"

#include <utility>

namespace orvantile::platform {

X11Shortcuts::X11Shortcuts(std::unique_ptr<x11::XConnection> connection_, Scheduler& scheduler)
    : connection(std::move(connection_)),
      session(*connection),
      services(session, scheduler,
               {.publishBus = [this](const std::string& address) { publishBus(address); },
                .askToken = [this](const auto& receiver) { askToken(receiver); }}) {}

void X11Shortcuts::publishBus(const std::string& address) {
    const auto property = connection->atoms().accessibilityBus;
    connection->ask<xcb_get_property_reply_t>(
        xcb_get_property(connection->get(), 0, connection->root(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1),
        [this, property, address](const auto* reply) {
            if (reply != nullptr && reply->type == XCB_ATOM_NONE) {
                xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, connection->root(), property,
                                    XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(address.size()),
                                    address.data());
            }
        });
}

void X11Shortcuts::askToken(const desktop::AccessibilitySettings::TokenReceiver& receiver) {
    const auto window = session.activeWindow();
    if (!window) {
        receiver({});
        return;
    }
    x11::askStartupIdentifier(*connection, static_cast<xcb_window_t>(window->handle), receiver);
}

} // namespace orvantile::platform
