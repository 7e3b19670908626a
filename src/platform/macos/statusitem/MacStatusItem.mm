#include "platform/macos/statusitem/MacStatusItem.h"

#include "platform/macos/application/SharedDelegate.h"

#include <utility>

namespace orvantile::platform::macos {

MacStatusItem::MacStatusItem(std::shared_ptr<SymbolImages> images_)
    : images(std::move(images_)),
      item([NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength]) {}

MacStatusItem::~MacStatusItem() {
    [NSStatusBar.systemStatusBar removeStatusItem:item];
}

void MacStatusItem::setImage(const std::optional<SymbolImage>& image) {
    item.button.image = image ? images->image(*image) : nil;
}

void MacStatusItem::setMenu(std::shared_ptr<Menu> menu_) {
    menu.reset(); // it lets go of what is to be shown anew
    menu = menu_ ? std::make_shared<StatusMenu>(std::move(menu_), sharedDelegate()) : nullptr;
    item.menu = menu ? menu->shown() : nil;
    sharedDelegate()->statusMenu = menu;
}

} // namespace orvantile::platform::macos
