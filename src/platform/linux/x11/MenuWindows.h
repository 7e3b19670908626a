#pragma once

#include "platform/linux/x11/XConnection.h"

#include <cstdint>
#include <functional>
#include <map>

namespace orvantile::platform::x11 {

/// Follows the menus that are on the screen, by their windows. Main thread only.
class MenuWindows {
public:
    explicit MenuWindows(XConnection& connection);
    MenuWindows(const MenuWindows&) = delete;
    MenuWindows& operator=(const MenuWindows&) = delete;
    ~MenuWindows() = default;

    /// Looks for the menus that are open already, and follows from now on.
    void start();

    /// A menu of the process opened or closed; −1 when it does not say whose it is.
    std::function<void(std::int32_t)> onOpened;
    std::function<void(std::int32_t)> onClosed;

    /// Whether it is not known yet if a window that has just come up is a menu; `onResolved` is called when
    /// all is known.
    [[nodiscard]] bool isResolving() const { return questions > 0; }

    std::function<void()> onResolved;

    /// How many menus of the process are open, those that do not say whose they are among them.
    [[nodiscard]] int open(std::int32_t process) const;

private:
    void handle(const xcb_generic_event_t& event);
    void scan();
    void appeared(xcb_window_t window);
    void disappeared(xcb_window_t window);
    void answered();

    XConnection& connection;
    std::map<xcb_window_t, std::int32_t> menus;      ///< open ones and their processes
    std::map<xcb_window_t, std::uint64_t> undecided; ///< windows that came up, by the question about them
    std::uint64_t latestQuestion = 0;
    int questions = 0;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
