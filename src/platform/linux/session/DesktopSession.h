#pragma once

#include "platform/linux/a11y/ObjectReference.h"
#include "platform/linux/keys/Accelerator.h"

#include "platform/linux/session/WindowObjects.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

namespace orvantile::platform::session {

/// The window that has the focus.
struct ActiveWindow {
    std::uint64_t handle = 0; ///< names the window for as long as it exists
    std::int32_t processIdentifier = -1;
    QString title;
    bool dialog = false; ///< transient, modal or of dialog type: only its own commands can fire
    WindowObjects objects{};

    /// The window on the accessibility bus; empty where only the window system tells of it.
    a11y::ObjectReference accessible{};

    friend bool operator==(const ActiveWindow&, const ActiveWindow&) = default;
};

/// What the window system tells about applications and keys. The handlers are set before `start` and called
/// from the main loop, in the order in which things happened. Main thread only.
class DesktopSession {
public:
    DesktopSession() = default;
    DesktopSession(const DesktopSession&) = delete;
    DesktopSession& operator=(const DesktopSession&) = delete;
    virtual ~DesktopSession() = default;

    /// Another window, or the same with another title, has the focus; absent when none has.
    std::function<void(const std::optional<ActiveWindow>&)> onActiveWindowChanged;

    /// A key went down that may belong to a shortcut. Keys that only type text never get here.
    std::function<void(const keys::Candidates&)> onKeyPressed;

    /// A menu of the process opened or closed.
    std::function<void(std::int32_t processIdentifier)> onMenuOpened;
    std::function<void(std::int32_t processIdentifier)> onMenuClosed;

    virtual void start() = 0;

    [[nodiscard]] virtual std::optional<ActiveWindow> activeWindow() const = 0;

    /// How many menus of the process are open at this moment.
    [[nodiscard]] virtual int openMenus(std::int32_t processIdentifier) const = 0;

    /// Whether key presses can be heard at all.
    [[nodiscard]] virtual bool hearsKeys() const = 0;

    /// Where key presses come from and what would widen that, in a sentence or two for the user; may be
    /// empty.
    [[nodiscard]] virtual QString keySources() const { return {}; }

    /// Handles everything that has arrived so far, so that a key is judged by what was known when it was
    /// pressed.
    virtual void drain() = 0;
};

} // namespace orvantile::platform::session
