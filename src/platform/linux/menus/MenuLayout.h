#pragma once

#include "platform/linux/menus/CommandList.h"

#include <QString>
#include <cstdint>
#include <optional>
#include <systemd/sd-bus.h>
#include <unordered_map>
#include <vector>

namespace orvantile::platform::menus {

/// A menu as com.canonical.dbusmenu describes it. What an item does not say has the value that the protocol
/// gives it. Main thread only.
class MenuLayout {
public:
    /// Reads an answer to GetLayout: (u(ia{sv}av)). Absent when it is anything else, or too large or deep.
    [[nodiscard]] static std::optional<MenuLayout> read(sd_bus_message& message);

    /// Takes up what ItemsPropertiesUpdated tells: a(ia{sv})a(ias).
    void update(sd_bus_message& message);

    /// The items that keys fire, in their order.
    [[nodiscard]] Commands commands() const;

    [[nodiscard]] std::size_t size() const { return items.size(); }

private:
    struct Item {
        std::int32_t number = 0;
        std::size_t parent = 0; ///< index of the menu that it is in; its own for the root
        QString title;
        std::optional<keys::Accelerator> accelerator;
        bool enabled = true;
        bool visible = true;
    };

    [[nodiscard]] static bool readProperties(sd_bus_message& message, Item& item);
    [[nodiscard]] static bool readRemoved(sd_bus_message& message, Item& item);
    [[nodiscard]] bool readItem(sd_bus_message& message, std::size_t parent, int depth);
    [[nodiscard]] bool canBeFired(std::size_t index) const;

    std::vector<Item> items;                               ///< a menu is before what is in it
    std::unordered_map<std::int32_t, std::size_t> indices; ///< by number
};

} // namespace orvantile::platform::menus
