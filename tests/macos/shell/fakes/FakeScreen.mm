#include "macos/shell/fakes/DesktopState.h"

using orvantile::test::desktop::state;

@interface NSScreen () {
@public
    orvantile::test::desktop::Screen screen;
}

@end

namespace {

NSScreen* screenFor(const orvantile::test::desktop::Screen& description) {
    NSScreen* made = [[NSScreen alloc] init];
    made->screen = description;
    return made;
}

} // namespace

@implementation NSScreen

@dynamic frame;
@dynamic visibleFrame;
@dynamic backingScaleFactor;
@dynamic maximumFramesPerSecond;

+ (NSScreen*)mainScreen {
    return state().hasMainScreen && !state().screens.empty() ? screenFor(state().screens.front()) : nil;
}

+ (NSArray<NSScreen*>*)screens {
    std::vector<id> all;
    for (const auto& screen : state().screens) {
        all.push_back(screenFor(screen));
    }
    return [NSArray arrayWithObjects:all.data() count:all.size()];
}

- (NSRect)frame {
    return NSMakeRect(screen.x, screen.y, screen.width, screen.height);
}

- (NSRect)visibleFrame {
    return NSMakeRect(screen.visibleX, screen.visibleY, screen.visibleWidth, screen.visibleHeight);
}

- (CGFloat)backingScaleFactor {
    return screen.scale;
}

- (NSInteger)maximumFramesPerSecond {
    return screen.framesPerSecond;
}

@end

void orvantile::test::desktop::setScreens(const std::vector<Screen>& screens, bool hasMain) {
    state().screens = screens;
    state().hasMainScreen = hasMain;
}
