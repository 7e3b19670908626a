#pragma once

#include "platform/linux/desktop/LiveTheme.h"
#include "platform/linux/x11/XConnection.h"

namespace orvantile::platform::x11 {

/// The theme that the settings manager of the X session (of Xfce, MATE, LXQt, GNOME …) announces, followed
/// through restarts of the manager. See the XSETTINGS protocol. Main thread only.
class SharedTheme final : public desktop::LiveTheme {
public:
    explicit SharedTheme(XConnection& connection);

    [[nodiscard]] std::optional<bool> isDark() const override { return dark; }

private:
    void handle(const xcb_generic_event_t& event);
    void askManager();
    void askSettings();
    void setDark(std::optional<bool> nowDark);

    XConnection& connection;
    xcb_window_t manager = XCB_WINDOW_NONE;
    std::optional<bool> dark;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
