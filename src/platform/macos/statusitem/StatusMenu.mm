#include "platform/macos/statusitem/StatusMenu.h"

#include "platform/macos/application/AppDelegate.h"
#include "platform/macos/cocoa/Text.h"

#include <algorithm>
#include <utility>

namespace orvantile::platform::macos {
namespace {

NSControlStateValue stateOf(const MenuItem& item) {
    return item.on ? NSControlStateValueOn : NSControlStateValueOff;
}

NSMenuItem* makeItem(const MenuItem& item, AppDelegate* delegate) {
    if (item.isSeparator()) {
        return [NSMenuItem separatorItem];
    }
    const bool ends = item.action == MenuAction::terminate;
    // Without a target the request to end travels to the application object.
    NSMenuItem* made = [[NSMenuItem alloc]
        initWithTitle:toNSString(item.title)
               action:ends ? @selector(terminate:) : NSSelectorFromString(toNSString(item.command))
        keyEquivalent:toNSString(item.keyEquivalent)];
    if (!ends) {
        made.target = delegate;
    }
    if (item.tag != 0) {
        made.state = stateOf(item);
        made.tag = item.tag;
    }
    return made;
}

} // namespace

StatusMenu::StatusMenu(std::shared_ptr<Menu> menu_, AppDelegate* delegate)
    : menu(std::move(menu_)),
      native([[NSMenu alloc] init]) {
    for (const auto& item : menu->items()) {
        [native addItem:makeItem(item, delegate)];
    }
    native.delegate = delegate;
    menu->onChange = [this] { updateStates(); };
}

StatusMenu::~StatusMenu() {
    menu->onChange = nullptr;
}

void StatusMenu::willOpen() {
    if (menu->willOpen) {
        menu->willOpen(*menu);
    }
    updateStates();
}

void StatusMenu::choose(const QString& command) {
    const auto found = std::ranges::find(menu->items(), command, &MenuItem::command);
    if (found != menu->items().end() && found->handler) {
        found->handler();
    }
}

void StatusMenu::updateStates() {
    for (const auto& item : menu->items()) {
        if (item.tag != 0) {
            [native itemWithTag:item.tag].state = stateOf(item);
        }
    }
}

} // namespace orvantile::platform::macos
