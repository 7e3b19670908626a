#include "platform/linux/desktop/statusitem/MenuDescription.h"

#include <algorithm>

namespace orvantile::platform::desktop {
namespace {

/// A single underscore would mark a mnemonic.
std::string label(QString title) {
    return title.replace(u'_', QStringLiteral("__")).toStdString();
}

MenuProperties properties(const MenuItem& item) {
    if (item.isSeparator()) {
        return {{"type", "separator"}};
    }
    MenuProperties described{{"label", label(item.title)}};
    if (item.tag != 0) {
        // An item that can be found again can have its state set.
        described["toggle-type"] = "checkmark";
        described["toggle-state"] = item.on ? 1 : 0;
    }
    if (!item.keyEquivalent.isEmpty()) {
        described["shortcut"] = MenuShortcut{{"Control", item.keyEquivalent.toStdString()}};
    }
    return described;
}

} // namespace

std::vector<MenuEntry> describe(const Menu& menu) {
    std::vector<MenuEntry> entries;
    for (const auto& item : menu.items()) {
        entries.push_back({static_cast<int>(entries.size()) + 1, properties(item)});
    }
    return entries;
}

std::vector<MenuEntry> changes(const std::vector<MenuEntry>& before, const std::vector<MenuEntry>& after) {
    std::vector<MenuEntry> changed;
    for (std::size_t index = 0; index < std::min(before.size(), after.size()); ++index) {
        MenuEntry difference{after[index].identifier, {}};
        const auto& former = before[index].properties;
        std::ranges::copy_if(after[index].properties,
                             std::inserter(difference.properties, difference.properties.end()),
                             [&former](const auto& property) {
                                 const auto found = former.find(property.first);
                                 return found == former.end() || found->second != property.second;
                             });
        if (!difference.properties.empty()) {
            changed.push_back(std::move(difference));
        }
    }
    return changed;
}

} // namespace orvantile::platform::desktop
