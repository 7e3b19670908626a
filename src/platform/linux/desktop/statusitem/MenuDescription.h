#pragma once

#include "platform/Menu.h"

#include <QString>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace orvantile::platform::desktop {

/// The keys of a shortcut pressed together, in the names of the menu protocol, such as "Control" and "q".
struct MenuShortcut {
    std::vector<std::string> keys;

    friend bool operator==(const MenuShortcut&, const MenuShortcut&) = default;
};

using MenuProperty = std::variant<std::string, int, MenuShortcut>;
using MenuProperties = std::map<std::string, MenuProperty>;

/// One item of a menu as the menu protocol (com.canonical.dbusmenu) has it.
struct MenuEntry {
    int identifier = 0; ///< the item's place in the menu, from 1
    MenuProperties properties;

    friend bool operator==(const MenuEntry&, const MenuEntry&) = default;
};

[[nodiscard]] std::vector<MenuEntry> describe(const Menu& menu);

/// The properties that differ from `before`, by item. Both describe the same menu.
[[nodiscard]] std::vector<MenuEntry> changes(const std::vector<MenuEntry>& before,
                                             const std::vector<MenuEntry>& after);

} // namespace orvantile::platform::desktop
