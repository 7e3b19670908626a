#include "macos/shell/fakes/FakeView.h"

#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/runtime/ClassTable.h"

#import <QuartzCore/CALayer.h>
#include <algorithm>

using namespace orvantile::test;

NSAccessibilityRole const NSAccessibilityStaticTextRole = @"AXStaticText";

@implementation CALayer

@synthesize contents;

@end

@implementation NSView

@synthesize frame;
@synthesize alphaValue;
@synthesize wantsLayer;
@synthesize layer;
@synthesize needsDisplay;
@synthesize translatesAutoresizingMaskIntoConstraints;
@synthesize appearance;
@dynamic wantsUpdateLayer;
@dynamic intrinsicContentSize;
@dynamic window;

- (instancetype)initWithFrame:(NSRect)newFrame {
    self.frame = newFrame;
    self.alphaValue = 1;
    self.translatesAutoresizingMaskIntoConstraints = YES;
    self.layer = [[CALayer alloc] init];
    return self;
}

- (BOOL)wantsUpdateLayer {
    return NO;
}

- (NSSize)intrinsicContentSize {
    return NSMakeSize(-1, -1);
}

- (NSWindow*)window {
    return parent != nil ? parent.window : shownIn;
}

- (void)updateLayer {
}

- (void)addSubview:(NSView*)view {
    [self addSubview:view positioned:NSWindowAbove relativeTo:nil];
}

- (void)addSubview:(NSView*)view positioned:(NSWindowOrderingMode)place relativeTo:(NSView*)otherView {
    if (view == nil) {
        objc::misuse("no view is added");
    }
    const auto other = std::ranges::find(views, otherView);
    if (otherView != nil && other == views.end()) {
        objc::misuse("a view is placed relative to one that is not there");
    }
    const bool below = place == NSWindowBelow;
    auto where = below ? views.begin() : views.end();
    if (otherView != nil) {
        where = below ? other : other + 1;
    }
    views.insert(where, view);
    view->parent = self;
}

- (void)removeFromSuperview {
    NSView* const keep = self;
    if (parent != nil) {
        std::erase(parent->views, keep);
        parent = nil;
    }
}

- (void)setAccessibilityElement:(BOOL)accessible {
    isAccessible = accessible;
}

- (void)setAccessibilityRole:(NSAccessibilityRole)newRole {
    role = utf8(newRole);
}

- (void)setAccessibilityLabel:(NSString*)newLabel {
    label = utf8(newLabel);
}

- (void)dealloc {
    for (NSView* view : views) {
        view->parent = nil;
    }
}

@end

@implementation NSControl
@end

@implementation NSButton
@end

@implementation NSVisualEffectView

@synthesize material;
@synthesize blendingMode;
@synthesize state;
@synthesize emphasized;
@synthesize maskImage;

@end
