#include "platform/linux/menus/ExportedMenu.h"

#include "platform/linux/a11y/ReplyDecoder.h"
#include "platform/linux/keys/KeyBinding.h"
#include "platform/linux/menus/CommandList.h"
#include "platform/linux/menus/Dictionary.h"

#include <algorithm>
#include <iterator>

namespace orvantile::platform::menus {
namespace {

constexpr std::size_t mostGroups = 512;

std::optional<std::pair<std::uint32_t, std::uint32_t>> readLink(sd_bus_message& message) {
    if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_VARIANT, "(uu)") <= 0 ||
        sd_bus_message_enter_container(&message, SD_BUS_TYPE_STRUCT, "uu") <= 0) {
        return std::nullopt;
    }
    const auto group = a11y::readNumber(message);
    const auto number = group ? a11y::readNumber(message) : std::nullopt;
    if (!number || sd_bus_message_exit_container(&message) < 0 ||
        sd_bus_message_exit_container(&message) < 0) {
        return std::nullopt;
    }
    return std::pair(*group, *number);
}

} // namespace

bool ExportedMenu::readEntry(sd_bus_message& message, List& list) {
    Entry entry;
    const bool read = readDictionary(message, [&](std::string_view name, sd_bus_message& value) {
        if ((name == ":submenu" || name == ":section") && holdsVariant(value, "(uu)")) {
            const auto link = readLink(value);
            if (link) {
                entry.links.push_back(*link);
            }
            return link.has_value();
        }
        const bool known = name == "label" || name == "action" || name == "accel";
        if (!known || !holdsVariant(value, "s")) {
            return true;
        }
        const auto text = a11y::readVariantText(value);
        if (!text) {
            return false;
        }
        if (name == "label") {
            entry.item.title = withoutMnemonic(*text);
        } else if (name == "action") {
            entry.item.action = text->toStdString();
        } else {
            entry.item.accelerator = keys::parseAccelerator(*text);
        }
        return true;
    });
    list.push_back(std::move(entry));
    return read;
}

void ExportedMenu::started(sd_bus_message& answer) {
    static_cast<void>(readArray(answer, "(uuaa{sv})", [this](sd_bus_message& entry) {
        if (sd_bus_message_enter_container(&entry, SD_BUS_TYPE_STRUCT, "uuaa{sv}") <= 0) {
            return false;
        }
        const auto group = a11y::readNumber(entry);
        const auto number = group ? a11y::readNumber(entry) : std::nullopt;
        List list;
        if (!number ||
            !readArray(
                entry, "a{sv}", [&](sd_bus_message& each) { return readEntry(each, list); },
                mostItems - std::min(size, mostItems)) ||
            sd_bus_message_exit_container(&entry) < 0) {
            return false;
        }
        auto& known = lists[{*group, *number}];
        size += list.size();
        size -= known.size();
        known = std::move(list);
        return true;
    }));
}

void ExportedMenu::changed(sd_bus_message& message) {
    static_cast<void>(readArray(message, "(uuuuaa{sv})", [this](sd_bus_message& entry) {
        if (sd_bus_message_enter_container(&entry, SD_BUS_TYPE_STRUCT, "uuuuaa{sv}") <= 0) {
            return false;
        }
        const auto group = a11y::readNumber(entry);
        const auto number = group ? a11y::readNumber(entry) : std::nullopt;
        const auto position = number ? a11y::readNumber(entry) : std::nullopt;
        const auto removed = position ? a11y::readNumber(entry) : std::nullopt;
        List added;
        if (!removed ||
            !readArray(
                entry, "a{sv}", [&](sd_bus_message& each) { return readEntry(each, added); },
                mostItems - std::min(size, mostItems)) ||
            sd_bus_message_exit_container(&entry) < 0) {
            return false;
        }
        auto& list = lists[{*group, *number}];
        const auto first = std::min<std::size_t>(*position, list.size());
        const auto last = first + std::min<std::size_t>(*removed, list.size() - first);
        size += added.size();
        size -= last - first;
        const auto begin = list.begin();
        const auto place =
            list.erase(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(last));
        list.insert(place, std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
        return true;
    }));
}

std::vector<std::uint32_t> ExportedMenu::takeUnknownGroups() {
    std::set<std::uint32_t> wanted{0};
    for (const auto& [place, list] : lists) {
        for (const auto& entry : list) {
            for (const auto& link : entry.links) {
                wanted.insert(link.first);
            }
        }
    }
    std::vector<std::uint32_t> unknown;
    for (const auto group : wanted) {
        if (asked.size() < mostGroups && asked.insert(group).second) {
            unknown.push_back(group);
        }
    }
    return unknown;
}

std::vector<ExportedMenu::Item> ExportedMenu::items() const {
    std::vector<Item> found;
    std::set<Place> visited;
    collect({0, 0}, visited, found);
    return found;
}

/// A list that refers to itself is shown once.
void ExportedMenu::collect(const Place& place, std::set<Place>& visited, std::vector<Item>& found) const {
    const auto list = lists.find(place);
    if (list == lists.end() || !visited.insert(place).second) {
        return;
    }
    for (const auto& entry : list->second) {
        if (!entry.item.action.empty()) {
            found.push_back(entry.item);
        }
        for (const auto& link : entry.links) {
            collect(link, visited, found);
        }
    }
}

} // namespace orvantile::platform::menus
