#pragma once

#include <QString>
#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace orvantile::platform {

/// What choosing a menu item does.
enum class MenuAction {
    none,      ///< a separator
    call,      ///< calls the item's handler
    terminate, ///< asks the application to end
};

struct MenuItem {
    QString title; ///< empty for a separator
    MenuAction action = MenuAction::none;
    std::function<void()> handler;
    QString command;       ///< names what calling it does, for desktops that know commands by name
    QString keyEquivalent; ///< with the platform's command modifier; empty for none
    int tag = 0;
    bool on = false; ///< shows a check mark

    [[nodiscard]] bool isSeparator() const { return action == MenuAction::none; }

    [[nodiscard]] static MenuItem separator() { return {}; }
};

/// A menu as data. Whoever shows it watches it through `onChange`. Main thread only.
class Menu {
public:
    explicit Menu(std::vector<MenuItem> items_) : entries(std::move(items_)) {}

    /// Called each time the menu is about to open.
    std::function<void(Menu&)> willOpen;

    /// Called after an item's state has changed; set by whoever shows the menu.
    std::function<void()> onChange;

    [[nodiscard]] const std::vector<MenuItem>& items() const { return entries; }

    /// The first item with the tag, or null.
    [[nodiscard]] const MenuItem* itemWithTag(int tag) const {
        const auto found = std::ranges::find(entries, tag, &MenuItem::tag);
        return found == entries.end() ? nullptr : &*found;
    }

    /// Sets the state of the first item with the tag, if there is one.
    void setState(int tag, bool on) {
        const auto found = std::ranges::find(entries, tag, &MenuItem::tag);
        if (found != entries.end() && std::exchange(found->on, on) != on && onChange) {
            onChange();
        }
    }

private:
    std::vector<MenuItem> entries;
};

} // namespace orvantile::platform
