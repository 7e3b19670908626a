#pragma once

#include "platform/Screens.h"
#include "platform/linux/x11/ScreenLayout.h"
#include "platform/linux/x11/X11Session.h"

#include <vector>

namespace orvantile::platform::x11 {

/// The monitors of the X server, followed by events; answers come from memory. The scale is the toolkit's.
class X11Screens final : public Screens {
public:
    X11Screens(XConnection& connection, const X11Session& session);

    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::vector<Screen> screens() const override;

    /// Where a rectangle in points is on the pixel grid.
    [[nodiscard]] ScreenLayout::Placement place(const Rect& rect) const;

    /// Whether the active window fills its monitor.
    [[nodiscard]] bool isFullScreen() const;

    /// The whole root window.
    [[nodiscard]] PixelRect bounds() const { return {0, 0, rootWidth, rootHeight}; }

private:
    void handle(const xcb_generic_event_t& event);
    void askMonitors();
    void askWorkAreas();
    void askStruts();
    [[nodiscard]] ScreenLayout layout() const;
    [[nodiscard]] std::optional<std::size_t> mainMonitor(const ScreenLayout& layout) const;

    XConnection& connection;
    const X11Session& session;
    bool hasMonitors = false; ///< whether the server can tell
    std::uint8_t randrEvents = 0;
    int rootWidth;
    int rootHeight;
    std::vector<PixelRect> monitors;  ///< the primary one first
    std::vector<PixelRect> workAreas; ///< per monitor where the desktop tells, else one of the whole desktop
    std::vector<Strut> struts;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
