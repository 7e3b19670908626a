#pragma once

#include <AppKit/NSAppearance.h>
#include <Foundation/Foundation.h>

@class CALayer, NSImage, NSWindow;

typedef NS_ENUM(NSInteger, NSWindowOrderingMode) {
    NSWindowAbove = 1,
    NSWindowBelow = -1,
    NSWindowOut = 0,
};

typedef NSString* NSAccessibilityRole;
extern "C" NSAccessibilityRole const NSAccessibilityStaticTextRole;

@interface NSResponder : NSObject
@end

@interface NSView : NSResponder
@property NSRect frame;
@property CGFloat alphaValue;
@property BOOL wantsLayer;
@property(strong) CALayer* layer;
@property(readonly, assign) NSWindow* window;
@property(readonly) BOOL wantsUpdateLayer;
@property BOOL needsDisplay;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property(readonly) NSSize intrinsicContentSize;
@property(strong) NSAppearance* appearance;
- (instancetype)initWithFrame:(NSRect)frame;
- (void)addSubview:(NSView*)view;
- (void)addSubview:(NSView*)view positioned:(NSWindowOrderingMode)place relativeTo:(NSView*)otherView;
- (void)removeFromSuperview;
- (void)updateLayer;
@end

@interface NSView (NSAccessibility)
- (void)setAccessibilityElement:(BOOL)accessibilityElement;
- (void)setAccessibilityRole:(NSAccessibilityRole)role;
- (void)setAccessibilityLabel:(NSString*)label;
@end

@interface NSControl : NSView
@end

@interface NSButton : NSControl
@end
