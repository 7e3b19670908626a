#pragma once

#include "platform/linux/menus/ActionGroup.h"
#include "platform/linux/session/WindowObjects.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orvantile::platform::menus {

/// The actions of a program and of one of its windows, by the names that menus and descriptions give them:
/// "app." or "win." before the action's own. Main thread only.
class ActionGroups {
public:
    /// Knows no action.
    ActionGroups() = default;

    /// Asks at once, where the window says that there are any, and follows changes.
    ActionGroups(a11y::BusConnection& bus, const session::WindowObjects& objects);

    /// Whether the action can be activated, which those cannot that the program does not have. Absent for
    /// names of other kinds.
    [[nodiscard]] std::optional<bool> isEnabled(std::string_view action) const;

private:
    std::unique_ptr<ActionGroup> application;
    std::unique_ptr<ActionGroup> window;
};

/// The actions at an object of the program; null when name or path are none.
[[nodiscard]] std::unique_ptr<ActionGroup> actionsAt(a11y::BusConnection& bus, const std::string& name,
                                                     const std::string& path);

} // namespace orvantile::platform::menus
