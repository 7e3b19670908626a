#pragma once

#include "support/desktop/Window.h"

#include <functional>
#include <vector>

namespace orvantile::test {

/// Waits for what happens to windows under a window manager. Everything throws std::runtime_error, with what
/// is on the screen instead, when it does not happen in time.
class WindowWatcher {
public:
    using Predicate = std::function<bool(const Window&)>;

    explicit WindowWatcher(const QString& display);

    /// The windows that the window manager manages, oldest first.
    [[nodiscard]] std::vector<Window> windows() const;

    /// The window that has the focus; without a handle when none has.
    [[nodiscard]] Window activeWindow() const;

    /// Menus on the screen, oldest below.
    [[nodiscard]] std::vector<Window> menus() const;

    Window awaitWindow(const Predicate& fits, QDeadlineTimer deadline = QDeadlineTimer(patience)) const;

    /// Waits until a window that fits has the focus.
    Window awaitActive(const Predicate& fits, QDeadlineTimer deadline = QDeadlineTimer(patience)) const;

    /// Waits until so many menus are open.
    std::vector<Window> awaitMenus(std::size_t count,
                                   QDeadlineTimer deadline = QDeadlineTimer(patience)) const;

    void awaitGone(xcb_window_t window, QDeadlineTimer deadline = QDeadlineTimer(patience)) const;

    /// Asks the window manager to give the focus to the window, and waits for it.
    void activate(xcb_window_t window) const;

    /// Asks the window manager to move the window, and waits until it is near there.
    void moveTo(xcb_window_t window, QPoint position) const;

    /// Asks the window manager to close the window.
    void close(xcb_window_t window) const;

private:
    void await(const char* what, const std::function<bool()>& done, const QDeadlineTimer& deadline) const;
    void askManager(xcb_window_t window, const char* request, std::uint32_t first) const;
    [[nodiscard]] std::string describeScreen() const;

    XConnection x;
};

/// Fits windows of that class (the second part of WM_CLASS), in any case of letters.
[[nodiscard]] WindowWatcher::Predicate ofClass(const QString& className);

/// Fits windows whose title contains the text.
[[nodiscard]] WindowWatcher::Predicate titled(const QString& text);

/// Fits windows of that process.
[[nodiscard]] WindowWatcher::Predicate ofProcess(pid_t process);

} // namespace orvantile::test
