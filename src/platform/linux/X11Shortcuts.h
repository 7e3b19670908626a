#pragma once

#include "platform/linux/ShortcutServices.h"
#include "platform/linux/x11/X11Session.h"
#include "platform/linux/x11/XConnection.h"

#include <memory>

namespace orvantile::platform {

/// Applications and their shortcuts as an X server tells of them.
struct X11Shortcuts {
    X11Shortcuts(std::unique_ptr<x11::XConnection> connection, Scheduler& scheduler);

    std::unique_ptr<x11::XConnection> connection;
    x11::X11Session session;
    ShortcutServices services;

private:
    /// Some toolkits find the bus by nothing but this property of the root window.
    void publishBus(const std::string& address);

    /// What was done last in the window with the focus, which is where settings are asked for.
    void askToken(const desktop::AccessibilitySettings::TokenReceiver& receiver);
};

} // namespace orvantile::platform
