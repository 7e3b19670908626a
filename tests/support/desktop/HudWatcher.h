#pragma once

#include "support/desktop/Window.h"

#include <QRect>
#include <QString>
#include <chrono>
#include <deque>
#include <map>
#include <optional>

namespace orvantile::test {

/// A HUD that was put on the screen.
struct ShownHud {
    QString label;
    QRect frame; ///< pixels
    std::chrono::steady_clock::time_point time;
};

/// Sees every HUD that is shown: a window outside the window manager's care whose class is the program's and
/// whose title is the label. A label that replaces another on the visible panel counts as well.
class HudWatcher {
public:
    explicit HudWatcher(const QString& display);

    /// The next HUD not yet taken; absent at the deadline.
    std::optional<ShownHud> awaitNext(QDeadlineTimer deadline = QDeadlineTimer(patience));

    /// Waits until no HUD is visible. False at the deadline.
    bool awaitHidden(QDeadlineTimer deadline = QDeadlineTimer(patience));

    /// All HUDs not yet taken that have been put on the screen by now.
    std::deque<ShownHud> takeAll();

    [[nodiscard]] bool isVisible() const;

private:
    void handle(const xcb_generic_event_t& event);
    void consider(xcb_window_t window);
    void record(xcb_window_t window);

    XConnection x;
    std::map<xcb_window_t, bool> panels; ///< whether each is mapped
    std::deque<ShownHud> shown;
};

} // namespace orvantile::test
