#include "platform/macos/desktop/MacScreens.h"

#import <AppKit/AppKit.h>

namespace orvantile::platform::macos {
namespace {

Rect toRect(NSRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

Screen toScreen(NSScreen* screen) {
    return {toRect(screen.frame), toRect(screen.visibleFrame), screen.backingScaleFactor};
}

} // namespace

std::optional<Screen> MacScreens::mainScreen() const {
    NSScreen* screen = NSScreen.mainScreen;
    return screen != nil ? std::optional(toScreen(screen)) : std::nullopt;
}

std::vector<Screen> MacScreens::screens() const {
    NSArray<NSScreen*>* all = NSScreen.screens;
    std::vector<Screen> result;
    result.reserve(all.count);
    for (NSUInteger index = 0; index < all.count; ++index) {
        result.push_back(toScreen(all[index]));
    }
    return result;
}

} // namespace orvantile::platform::macos
