#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/fakes/FakeView.h"
#include "macos/shell/runtime/ClassTable.h"

#include <algorithm>

using namespace orvantile::test;
using desktop::state;

@interface NSMenuItem () {
@public
    NSString* title;
    NSString* key;
    SEL selector;
    bool separates;
}

@end

@implementation NSMenuItem

@synthesize target;
@synthesize tag;
@synthesize state;

+ (NSMenuItem*)separatorItem {
    NSMenuItem* made = [[NSMenuItem alloc] init];
    made->separates = true;
    return made;
}

- (instancetype)initWithTitle:(NSString*)newTitle action:(SEL)action keyEquivalent:(NSString*)keyEquivalent {
    if (newTitle == nil || keyEquivalent == nil) {
        objc::misuse("a menu item without a title or key equivalent");
    }
    title = newTitle;
    key = keyEquivalent;
    selector = action;
    return self;
}

- (NSString*)fakeDescription {
    return separates ? @"separator" : title;
}

@end

@interface NSMenu () {
@public
    std::vector<NSMenuItem*> items;
}

@end

@implementation NSMenu

@synthesize delegate;

- (void)addItem:(NSMenuItem*)item {
    items.push_back(item);
}

- (NSMenuItem*)itemWithTag:(NSInteger)tag {
    const auto found = std::ranges::find_if(items, [&](NSMenuItem* item) { return item.tag == tag; });
    return found != items.end() ? *found : nil;
}

@end

@implementation NSStatusBarButton

@synthesize image;

@end

@interface NSStatusItem () {
@public
    NSStatusBarButton* shownButton;
}

@end

@implementation NSStatusItem

@dynamic button;
@synthesize menu;

- (NSStatusBarButton*)button {
    return shownButton;
}

@end

@implementation NSStatusBar

+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* const bar = [[NSStatusBar alloc] init];
    return bar;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    NSStatusItem* item = [[NSStatusItem alloc] init];
    if (desktop::state().statusItemsHaveButtons) {
        item->shownButton = [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, 22, 22)];
    }
    desktop::state().statusItems.push_back(item);
    return item;
}

- (void)removeStatusItem:(NSStatusItem*)item {
    if (std::erase(desktop::state().statusItems, item) == 0) {
        objc::misuse("an item is removed that is not in the bar");
    }
}

@end

namespace orvantile::test::desktop {
namespace {

/// Calls a method without arguments.
void send(id target, SEL selector) {
    const auto* object = (const objc::Object*)(__bridge void*)target;
    const auto found = objc::findMethod(object->isa, (const char*)(void*)selector);
    if (found.method == nullptr) {
        objc::misuse(std::string("the target does not know ") + (const char*)(void*)selector);
    }
    ((void (*)(void*, const char*))found.method->implementation)((__bridge void*)target,
                                                                 (const char*)(void*)selector);
}

NSMenu* shownMenu() {
    return state().statusItems.at(0).menu;
}

} // namespace

std::vector<StatusItem> statusItems() {
    const Pool pool;
    std::vector<StatusItem> result;
    for (NSStatusItem* item : state().statusItems) {
        NSImage* const image = item->shownButton.image;
        StatusItem text{.hasMenu = item.menu != nil};
        if (image != nil) {
            text.symbol = image->symbol;
            text.description = image->description;
            text.isTemplate = image->isTemplate;
        }
        result.push_back(text);
    }
    return result;
}

void setStatusItemsHaveButtons(bool have) {
    state().statusItemsHaveButtons = have;
}

std::vector<MenuItem> menu() {
    const Pool pool;
    std::vector<MenuItem> result;
    for (NSMenuItem* item : shownMenu()->items) {
        result.push_back({.title = utf8(item->title),
                          .action = item->selector != nullptr ? (const char*)(void*)item->selector : "",
                          .keyEquivalent = utf8(item->key),
                          .separator = item->separates,
                          .hasTarget = item.target != nil,
                          .on = item.state == NSControlStateValueOn,
                          .tag = item.tag});
    }
    return result;
}

void openMenu() {
    const Pool pool;
    [shownMenu().delegate menuWillOpen:shownMenu()];
}

void openAnotherMenu() {
    const Pool pool;
    [shownMenu().delegate menuWillOpen:[[NSMenu alloc] init]];
}

void chooseItem(const std::string& title) {
    const Pool pool;
    for (NSMenuItem* item : shownMenu()->items) {
        if (!item->separates && utf8(item->title) == title) {
            send(item.target, item->selector);
            return;
        }
    }
    objc::misuse("the menu has no item " + title);
}

} // namespace orvantile::test::desktop
