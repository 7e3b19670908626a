#include "platform/linux/a11y/MenuTable.h"

#include <algorithm>

namespace orvantile::platform::a11y {

MenuItem* MenuTable::insert(const std::string& path, const std::string& toplevel) {
    if (auto* known = find(path)) {
        return known;
    }
    if (isFull()) {
        return nullptr;
    }
    auto& item = items[path];
    item.path = path;
    item.toplevel = toplevel;
    item.order = inserted++;
    return &item;
}

MenuItem* MenuTable::find(const std::string& path) {
    const auto found = items.find(path);
    return found == items.end() ? nullptr : &found->second;
}

void MenuTable::setAccelerator(MenuItem& item, std::optional<keys::Accelerator> accelerator) {
    if (item.accelerator == accelerator) {
        return;
    }
    unlink(item);
    item.accelerator = accelerator;
    if (accelerator) {
        byAccelerator.emplace(Key{*accelerator, item.order}, &item);
    }
}

const MenuItem* MenuTable::command(const std::string& toplevel, const keys::Accelerator& accelerator) const {
    const MenuItem* disabled = nullptr;
    for (auto entry = byAccelerator.lower_bound({accelerator, 0});
         entry != byAccelerator.end() && entry->first.first == accelerator; ++entry) {
        const MenuItem& item = *entry->second;
        if (item.title.isEmpty() || item.toplevel != toplevel) {
            continue;
        }
        if (item.enabled) {
            return &item;
        }
        disabled = disabled == nullptr ? &item : disabled;
    }
    return disabled != nullptr && hasEnabledCopy(*disabled) ? disabled : nullptr;
}

bool MenuTable::hasEnabledCopy(const MenuItem& item) const {
    return std::ranges::any_of(items, [&](const auto& entry) {
        const auto& other = entry.second;
        return other.copy && other.enabled && other.title == item.title && other.toplevel == item.toplevel;
    });
}

bool MenuTable::hasAccelerators(const std::string& toplevel) const {
    return std::ranges::any_of(byAccelerator,
                               [&](const auto& entry) { return entry.second->toplevel == toplevel; });
}

std::vector<std::string> MenuTable::accelerated() const {
    std::vector<std::string> paths;
    paths.reserve(byAccelerator.size());
    for (const auto& entry : byAccelerator) {
        paths.push_back(entry.second->path);
    }
    return paths;
}

void MenuTable::removeUnseen(const std::string& toplevel, std::uint64_t seen) {
    removeIf([&](const MenuItem& item) { return item.toplevel == toplevel && item.seen != seen; });
}

void MenuTable::removeToplevel(const std::string& toplevel) {
    removeIf([&](const MenuItem& item) { return item.toplevel == toplevel; });
}

void MenuTable::clear() {
    byAccelerator.clear();
    items.clear();
}

void MenuTable::unlink(const MenuItem& item) {
    if (item.accelerator) {
        byAccelerator.erase(Key{*item.accelerator, item.order});
    }
}

void MenuTable::removeIf(const std::function<bool(const MenuItem&)>& matches) {
    std::erase_if(items, [&](const auto& entry) {
        const bool gone = matches(entry.second);
        if (gone) {
            unlink(entry.second);
        }
        return gone;
    });
}

} // namespace orvantile::platform::a11y
