#pragma once

#include "platform/linux/session/DesktopSession.h"
#include "platform/linux/x11/PixelRect.h"
#include "platform/linux/x11/XConnection.h"

#include <functional>
#include <memory>
#include <optional>

namespace orvantile::platform::x11 {

/// Follows the window that the window manager calls active: whose it is, its title and kind, and where it is.
/// Main thread only.
class FocusedWindow {
public:
    explicit FocusedWindow(XConnection& connection);
    FocusedWindow(const FocusedWindow&) = delete;
    FocusedWindow& operator=(const FocusedWindow&) = delete;
    ~FocusedWindow() = default;

    void start();

    [[nodiscard]] const std::optional<session::ActiveWindow>& window() const { return current; }

    /// Where the window is, in pixels; absent while there is none or it is not known yet.
    [[nodiscard]] const std::optional<PixelRect>& frame() const { return place; }

    std::function<void(const std::optional<session::ActiveWindow>&)> onChanged;

    /// Whether another window has become active and is not known yet; `onResolved` is called when it is.
    [[nodiscard]] bool isResolving() const { return questions > 0; }

    std::function<void()> onResolved;

private:
    struct Details;

    void handle(const xcb_generic_event_t& event);
    void askWhich();
    void answered();
    void become(xcb_window_t window);
    void askDetails(std::function<void(const session::ActiveWindow&)> answer);
    void askPlace();
    void refresh();
    void settle(std::optional<session::ActiveWindow> window);

    XConnection& connection;
    xcb_window_t followed = XCB_WINDOW_NONE; ///< the active one, perhaps not known yet
    std::optional<session::ActiveWindow> current;
    std::optional<PixelRect> place;
    int questions = 0;
    bool placeAsked = false;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
