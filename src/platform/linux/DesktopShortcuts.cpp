#include "platform/linux/DesktopShortcuts.h"

#include "platform/linux/x11/StartupIdentifier.h"

#include <utility>

namespace orvantile::platform {

DesktopShortcuts::DesktopShortcuts(std::unique_ptr<x11::XConnection> x_,
                                   std::unique_ptr<session::DesktopSession> native_, Scheduler& scheduler)
    : x(std::move(x_)),
      native(std::move(native_)),
      services(whole(), scheduler, hooks()) {}

session::DesktopSession& DesktopShortcuts::whole() {
    if (x) {
        server.emplace(*x);
    }
    if (server && native) {
        return both.emplace(*server, *native);
    }
    return server ? static_cast<session::DesktopSession&>(*server) : *native;
}

ShortcutServices::Hooks DesktopShortcuts::hooks() {
    if (!x) {
        return {};
    }
    return {.publishBus = [this](const std::string& address) { publishBus(address); },
            .askToken = [this](const auto& receiver) { askToken(receiver); }};
}

void DesktopShortcuts::start() {
    if (both) {
        both->start();
    } else if (server) {
        server->start();
    } else {
        native->start();
    }
    if (x) {
        x->synchronize();
    }
}

void DesktopShortcuts::publishBus(const std::string& address) {
    const auto property = x->atoms().accessibilityBus;
    x->ask<xcb_get_property_reply_t>(
        xcb_get_property(x->get(), 0, x->root(), property, XCB_GET_PROPERTY_TYPE_ANY, 0, 1),
        [this, property, address](const auto* reply) {
            if (reply != nullptr && reply->type == XCB_ATOM_NONE) {
                xcb_change_property(x->get(), XCB_PROP_MODE_REPLACE, x->root(), property, XCB_ATOM_STRING, 8,
                                    static_cast<std::uint32_t>(address.size()), address.data());
            }
        });
}

void DesktopShortcuts::askToken(const desktop::AccessibilitySettings::TokenReceiver& receiver) {
    const auto window = server->activeWindow();
    if (!window) {
        receiver({});
        return;
    }
    x11::askStartupIdentifier(*x, static_cast<xcb_window_t>(window->handle), receiver);
}

} // namespace orvantile::platform
