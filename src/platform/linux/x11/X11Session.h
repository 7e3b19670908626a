#pragma once

#include "platform/linux/session/DesktopSession.h"
#include "platform/linux/x11/FocusedWindow.h"
#include "platform/linux/x11/Keyboard.h"
#include "platform/linux/x11/MenuWindows.h"

#include <deque>

namespace orvantile::platform::x11 {

/// What the X server tells about windows, menus and keys. A key press is held back, for the length of a round
/// trip, while it is not known yet which window has just become active or whether a window that came up is a
/// menu, so that it is judged by what was on the screen when it was pressed.
class X11Session final : public session::DesktopSession {
public:
    explicit X11Session(XConnection& connection);

    void start() override;
    [[nodiscard]] std::optional<session::ActiveWindow> activeWindow() const override;
    [[nodiscard]] int openMenus(std::int32_t processIdentifier) const override;
    [[nodiscard]] bool hearsKeys() const override;
    void drain() override;

    /// Where the active window is, in pixels.
    [[nodiscard]] const std::optional<PixelRect>& activeFrame() const { return focused.frame(); }

private:
    void releaseKeys();

    XConnection& connection;
    FocusedWindow focused;
    MenuWindows menus;
    Keyboard keyboard;
    std::deque<keys::Candidates> held;
};

} // namespace orvantile::platform::x11
