#pragma once

#include "platform/linux/ShortcutServices.h"
#include "platform/linux/session/CombinedSession.h"
#include "platform/linux/x11/X11Session.h"
#include "platform/linux/x11/XConnection.h"

#include <memory>
#include <optional>

namespace orvantile::platform {

/// Applications and their shortcuts as the window systems of the desktop tell of them.
class DesktopShortcuts {
public:
    /// `x` is null where no X server runs; `native`, a window system on which that one runs, where there is
    /// none. One of them is there. `scheduler` must outlive this.
    DesktopShortcuts(std::unique_ptr<x11::XConnection> x, std::unique_ptr<session::DesktopSession> native,
                     Scheduler& scheduler);

    /// The X server and what it tells; both null without one.
    [[nodiscard]] x11::XConnection* connection() { return x.get(); }

    [[nodiscard]] x11::X11Session* xSession() { return server ? &*server : nullptr; }

    /// Makes the peers of `platform` that use this, which must outlive them.
    void provide(Platform& platform) { services.provide(platform); }

    /// Begins to listen.
    void start();

private:
    [[nodiscard]] session::DesktopSession& whole();
    [[nodiscard]] ShortcutServices::Hooks hooks();

    /// Some toolkits find the bus by nothing but this property of the root window.
    void publishBus(const std::string& address);

    /// What was done last in the window with the focus, which is where settings are asked for.
    void askToken(const desktop::AccessibilitySettings::TokenReceiver& receiver);

    std::unique_ptr<x11::XConnection> x;
    std::optional<x11::X11Session> server;
    std::unique_ptr<session::DesktopSession> native;
    std::optional<session::CombinedSession> both;
    ShortcutServices services;
};

} // namespace orvantile::platform
