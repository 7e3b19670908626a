#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <QString>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <systemd/sd-bus.h>
#include <utility>
#include <vector>

namespace orvantile::platform::menus {

/// A menu as org.gtk.Menus describes it: lists of items in numbered groups, which refer to each other. Main
/// thread only.
class ExportedMenu {
public:
    struct Item {
        QString title;
        std::string action; ///< with the prefix of its group, such as "win.save"
        std::optional<keys::Accelerator> accelerator;
    };

    /// Takes up an answer to Start: a(uuaa{sv}).
    void started(sd_bus_message& answer);

    /// Takes up what Changed tells: a(uuuuaa{sv}).
    void changed(sd_bus_message& message);

    /// The groups that are referred to and not marked as asked for yet; marks them.
    [[nodiscard]] std::vector<std::uint32_t> takeUnknownGroups();

    /// The groups that have been asked for.
    [[nodiscard]] const std::set<std::uint32_t>& groups() const { return asked; }

    /// All items in the order in which the menu shows them.
    [[nodiscard]] std::vector<Item> items() const;

private:
    /// Group and number of a list.
    using Place = std::pair<std::uint32_t, std::uint32_t>;

    struct Entry {
        Item item;
        std::vector<Place> links; ///< its submenu and its section
    };

    using List = std::vector<Entry>;

    [[nodiscard]] static bool readEntry(sd_bus_message& message, List& list);
    void collect(const Place& place, std::set<Place>& visited, std::vector<Item>& found) const;

    std::map<Place, List> lists;
    std::set<std::uint32_t> asked;
    std::size_t size = 0; ///< entries of all lists
};

} // namespace orvantile::platform::menus
