#pragma once

#include "platform/AccessibilityElement.h"
#include "platform/linux/keys/Accelerator.h"
#include "platform/linux/session/DesktopSession.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace orvantile::platform::a11y {

/// What a source says about a key press.
struct MenuAnswer {
    /// The enabled command that it fires, as it stood before the press: a snapshot. Null when there is none.
    std::shared_ptr<const AccessibilityNode> command{};

    /// Whether the source knows what the keys mean in that window: then no other source is asked.
    bool decided = false;
};

/// How well a source knows the menus of a process.
struct MenuReach {
    std::size_t items = 0;
    std::size_t accelerators = 0; ///< items that have one
    bool asked = false;           ///< it has been in front while it could be asked
};

/// A source of the menu commands of running applications and their accelerators. Nothing here blocks: what
/// has not been learned yet is not there. Main thread only.
class MenuModel {
public:
    MenuModel() = default;
    MenuModel(const MenuModel&) = delete;
    MenuModel& operator=(const MenuModel&) = delete;
    virtual ~MenuModel() = default;

    /// Called from the main loop when the source can be asked, be it for the first time or again.
    std::function<void()> onAvailable;

    /// Whether the source can be asked at this moment.
    [[nodiscard]] virtual bool isAvailable() const { return true; }

    /// The process came to the front: learns its commands and keeps them fresh. They are remembered while the
    /// process lives. −1 follows nothing.
    virtual void follow(std::int32_t processIdentifier) = 0;

    /// The focus moved to `window`, or its title changed.
    virtual void windowActivated(const session::ActiveWindow& window) = 0;

    /// A menu of the followed process closed: its contents may have changed.
    virtual void menuClosed() = 0;

    /// The command of `window` that the key press fires.
    [[nodiscard]] virtual MenuAnswer commandFor(const session::ActiveWindow& window,
                                                const keys::Candidates& candidates) = 0;

    /// What is known at this moment of the menus of a process.
    [[nodiscard]] virtual MenuReach reach(std::int32_t processIdentifier) const = 0;
};

} // namespace orvantile::platform::a11y
