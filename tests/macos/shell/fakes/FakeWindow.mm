#include "macos/shell/fakes/FakeWindow.h"

#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeView.h"
#include "macos/shell/recording/CallRecorder.h"
#include "macos/shell/runtime/ClassTable.h"

#import <QuartzCore/CALayer.h>
#include <algorithm>
#include <cmath>
#include <utility>

using namespace orvantile::test;
using desktop::state;

@implementation NSWindow

@synthesize styleMask;
@synthesize level;
@synthesize collectionBehavior;
@synthesize backgroundColor;
@synthesize opaque;
@synthesize hasShadow;
@synthesize ignoresMouseEvents;
@synthesize hidesOnDeactivate;
@synthesize releasedWhenClosed;
@synthesize alphaValue;
@synthesize contentView = _contentView;

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag {
    frameRect = contentRect;
    self.styleMask = style;
    self.releasedWhenClosed = YES;
    self.alphaValue = 1;
    if ([self isKindOfClass:[NSPanel class]]) {
        state().panel = (NSPanel*)self;
    }
    return self;
}

- (void)setContentView:(NSView*)view {
    _contentView = view;
    if (view != nil) {
        view->shownIn = self;
    }
}

- (instancetype)animator {
    return self;
}

- (void)setFrame:(NSRect)frame display:(BOOL)flag {
    frameRect = frame;
}

- (void)orderFrontRegardless {
    visible = true;
}

- (void)makeKeyAndOrderFront:(id)sender {
    visible = true;
}

- (void)orderOut:(id)sender {
    visible = false;
}

- (void)close {
    if (self.releasedWhenClosed) {
        objc::misuse("a window that is still owned would be released");
    }
    visible = false;
    isClosed = true;
}

@end

@implementation NSPanel

@synthesize floatingPanel;

@end

@implementation NSAnimationContext

@synthesize duration;

+ (void)runAnimationGroup:(void (^)(NSAnimationContext*))changes {
    changes([[NSAnimationContext alloc] init]);
}

+ (void)runAnimationGroup:(void (^)(NSAnimationContext*))changes
        completionHandler:(void (^)(void))completionHandler {
    changes([[NSAnimationContext alloc] init]);
    state().animationsEnding.push_back(completionHandler);
}

@end

namespace orvantile::test::desktop {
namespace {

void displayAll(NSView* view) {
    if (view.needsDisplay) {
        view.needsDisplay = NO;
        if (view.wantsUpdateLayer) {
            [view updateLayer];
        }
    }
    for (NSView* child : view->views) {
        displayAll(child);
    }
}

/// What a look at the fakes makes the code under test send is not recorded.
void displayUnrecorded(NSView* view) {
    auto& recorder = CallRecorder::shared();
    const auto count = recorder.calls().size();
    displayAll(view);
    recorder.shorten(count);
}

std::string className(NSObject* object) {
    return (*(objc::Object* const*)(const void*)&object)->isa->data->name;
}

NSView* viewOfKind(const std::string& kind) {
    for (NSView* view : state().panel.contentView->views) {
        if (className(view) == kind) {
            return view;
        }
    }
    objc::misuse("the panel shows no " + kind);
}

NSImage* imageOf(NSView* view) {
    return [view isKindOfClass:[NSVisualEffectView class]] ? ((NSVisualEffectView*)view).maskImage
                                                           : (NSImage*)view.layer.contents;
}

} // namespace

void finishAnimations() {
    const Pool pool;
    const auto ending = std::exchange(state().animationsEnding, {});
    for (const auto& block : ending) {
        block();
    }
}

std::optional<Panel> panel() {
    const Pool pool;
    NSPanel* const shown = state().panel;
    if (shown == nil) {
        return std::nullopt;
    }
    NSView* const content = shown.contentView;
    const NSRect frame = shown->frameRect;
    Panel result{.visible = shown->visible,
                 .closed = shown->isClosed,
                 .x = frame.origin.x,
                 .y = frame.origin.y,
                 .width = frame.size.width,
                 .height = frame.size.height,
                 .alpha = shown.alphaValue};
    if (content == nil) {
        return result;
    }
    displayUnrecorded(content);
    result.constraintsFromMask = content.translatesAutoresizingMaskIntoConstraints;
    result.intrinsicWidth = content.intrinsicContentSize.width;
    result.intrinsicHeight = content.intrinsicContentSize.height;
    result.accessible = content->isAccessible;
    result.role = content->role;
    result.label = content->label;
    for (NSView* view : content->views) {
        const NSRect place = view.frame;
        result.views.push_back({className(view), place.origin.x, place.origin.y, place.size.width,
                                place.size.height, view.alphaValue, view.layer.contents != nil});
        if (NSImage* const image = imageOf(view)) {
            result.views.back().pictureWidth = image->points.width;
            result.views.back().pictureHeight = image->points.height;
        }
    }
    return result;
}

unsigned pixelOf(const std::string& kind, long x, long y) {
    const Pool pool;
    displayUnrecorded(state().panel.contentView);
    NSImage* const image = imageOf(viewOfKind(kind));
    if (image == nil || image->representations.size() != 1) {
        objc::misuse("there is no picture");
    }
    NSBitmapImageRep* const bitmap = (NSBitmapImageRep*)image->representations.front();
    if (!bitmap->tagged || bitmap.size.width != image->points.width ||
        bitmap.size.height != image->points.height) {
        objc::misuse("the picture has another size or colour space than its image");
    }
    const auto* pixel = bitmap.bitmapData + y * bitmap.bytesPerRow + x * 4;
    return static_cast<unsigned>(pixel[0]) << 24 | static_cast<unsigned>(pixel[1]) << 16 |
           static_cast<unsigned>(pixel[2]) << 8 | pixel[3];
}

void* makeToolkitView() {
    const Pool pool;
    static NSWindow* window = nil;
    window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 10, 10)
                                         styleMask:15
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    window.contentView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 10, 10)];
    return (__bridge void*)window.contentView;
}

} // namespace orvantile::test::desktop
