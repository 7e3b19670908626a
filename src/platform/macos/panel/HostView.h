#pragma once

#import <AppKit/AppKit.h>
#include <QPainterPath>

#include "platform/Panel.h"

// For Objective-C++ files only.

/// Shows one content of a panel: what is blurred behind it, and its picture over that. A new one for each
/// content, so that everything starts afresh.
@interface OrvantileHostView : NSView

- (instancetype)initWithContent:(const orvantile::platform::PanelContent&)content;

/// The content has drawn itself for a panel of this size.
- (void)showBlurBehind:(const QPainterPath&)region dark:(BOOL)dark panelSize:(NSSize)size scale:(double)scale;

/// The content at one instant.
- (void)showFrame:(const orvantile::platform::PanelFrame&)frame;
@end
