#include "support/FakeAccessibleTree.h"

#include <algorithm>

namespace orvantile::test {
namespace {

enum Role : unsigned { dialog = 16, frame = 23, menu = 33, menuBar = 34, menuItem = 35, application = 75 };

} // namespace

std::string FakeAccessibleTree::path(const std::string& rest) {
    return "/org/a11y/atspi/accessible/" + rest;
}

FakeAccessibleTree::FakeAccessibleTree(const Manners& manners) : cyclic(manners.cyclic) {
    addItem({"New", "n;<Alt>f:n;<Primary>n"});
    addItem({"Save", "s;<Alt>f:s;<Primary>s", false});
    addItem({"  Save As…  ", "a;<Alt>f:a;<Primary><Shift>s"});
    addItem({"About", "a;<Alt>h:a;"});
    for (int index = 0; index < manners.items; ++index) {
        auto label = "Command " + std::to_string(index);
        label.resize(std::max(label.size(), static_cast<std::size_t>(manners.titleBytes)), '.');
        const bool bound = manners.boundItems || manners.titleBytes > 0;
        addItem({label, bound ? ";;<Primary><Alt>x" : ""});
    }
    if (manners.garbageBindings) {
        for (const auto* binding :
             {"<<<<", ";;;;;;;", ";;<Primary", ";;<><><>q", ";;\x01", "\xE2\x98\x83;;\xE2\x98\x83",
              ";;<Primary><Primary><Primary>Nonsense", ";;0xffffffff", ";;U+110000"}) {
            addItem({"Garbage", binding});
        }
        addItem({"Endless", ";;" + std::string(1'000'000, '<')});
    }
}

std::vector<std::string> FakeAccessibleTree::children(const std::string& object) const {
    if (object == root) {
        std::vector<std::string> windows{path("frame")};
        for (const auto& entry : dialogs) {
            windows.push_back(entry.first);
        }
        return windows;
    }
    if (object == path("frame")) {
        return {path("bar")};
    }
    if (object == path("bar")) {
        return {path("menu")};
    }
    if (object == path("menu")) {
        auto paths = order;
        if (cyclic) {
            paths.insert(paths.begin(), {path("menu"), path("bar"), path("frame"), path("submenu")});
        }
        return paths;
    }
    return object == path("submenu") ? std::vector{path("menu"), path("submenu")}
                                     : std::vector<std::string>();
}

unsigned FakeAccessibleTree::role(const std::string& object) const {
    if (object == root) {
        return application;
    }
    if (object == path("frame")) {
        return frame;
    }
    if (object == path("bar")) {
        return menuBar;
    }
    if (object == path("menu") || object == path("submenu")) {
        return menu;
    }
    return dialogs.contains(object) ? dialog : menuItem;
}

std::string FakeAccessibleTree::name(const std::string& object) const {
    if (object == path("frame")) {
        return title;
    }
    if (const auto found = dialogs.find(object); found != dialogs.end()) {
        return found->second;
    }
    const auto item = items.find(object);
    return item == items.end() ? std::string() : item->second.title;
}

std::vector<unsigned> FakeAccessibleTree::states(const std::string& object) const {
    const auto item = items.find(object);
    const bool enabled = item == items.end() || item->second.enabled;
    return {enabled ? 1U << 24U | 1U << 8U : 0U, 0U};
}

std::string FakeAccessibleTree::binding(const std::string& object) const {
    const auto item = items.find(object);
    return item == items.end() ? std::string() : item->second.binding;
}

std::vector<std::string> FakeAccessibleTree::itemPaths() const {
    return order;
}

std::string FakeAccessibleTree::pathOf(const std::string& wanted) const {
    const auto found =
        std::ranges::find_if(items, [&](const auto& entry) { return entry.second.title == wanted; });
    return found == items.end() ? std::string() : found->first;
}

std::string FakeAccessibleTree::addItem(const FakeItem& item) {
    const auto added = path("item/" + std::to_string(order.size()));
    order.push_back(added);
    items[added] = item;
    return added;
}

std::string FakeAccessibleTree::addDialog(const std::string& dialogTitle) {
    const auto added = path("dialog/" + std::to_string(dialogs.size()));
    dialogs[added] = dialogTitle;
    return added;
}

} // namespace orvantile::test
