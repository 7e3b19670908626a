#pragma once

#include "platform/linux/a11y/BusConnection.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace orvantile::platform::menus {

/// The actions that a program exports at one object (org.gtk.Actions), and which of them can be activated.
/// Main thread only.
class ActionGroup {
public:
    /// Asks at once and follows changes.
    ActionGroup(a11y::BusConnection& bus, const std::string& name, const std::string& path);

    /// An action that the program does not have is not enabled.
    [[nodiscard]] bool isEnabled(const std::string& action) const;

private:
    void described(sd_bus_message& answer);
    void changed(sd_bus_message& message);
    [[nodiscard]] bool readDescriptions(sd_bus_message& message);

    std::unordered_map<std::string, bool> actions;
    a11y::SlotHandle changes;
    std::shared_ptr<const int> self = std::make_shared<int>();
};

} // namespace orvantile::platform::menus
