#pragma once

#include "platform/AccessibilityElement.h"
#include "platform/linux/keys/Accelerator.h"
#include "platform/linux/session/DesktopSession.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace orvantile::platform::a11y {

/// A source of the menu commands of running applications and their accelerators. Nothing here blocks: what
/// has not been learned yet is not there. Main thread only.
class MenuModel {
public:
    MenuModel() = default;
    MenuModel(const MenuModel&) = delete;
    MenuModel& operator=(const MenuModel&) = delete;
    virtual ~MenuModel() = default;

    /// Called once, from the main loop, when the source can be asked for the first time.
    std::function<void()> onAvailable;

    /// Whether the source can be asked at this moment.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// The process came to the front: learns its commands and keeps them fresh. They are remembered while the
    /// process lives. −1 follows nothing.
    virtual void follow(std::int32_t processIdentifier) = 0;

    /// The focus moved to `window`, or its title changed.
    virtual void windowActivated(const session::ActiveWindow& window) = 0;

    /// A menu of the followed process closed: its contents may have changed.
    virtual void menuClosed() = 0;

    /// The enabled command of `window` that the key press fires, as it stood before the press; null when
    /// there is none. The node is a snapshot.
    [[nodiscard]] virtual std::shared_ptr<const AccessibilityNode>
    commandFor(const session::ActiveWindow& window, const keys::Candidates& candidates) = 0;
};

} // namespace orvantile::platform::a11y
