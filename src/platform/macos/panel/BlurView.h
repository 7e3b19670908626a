#pragma once

#import <AppKit/AppKit.h>
#include <QPainterPath>

// For Objective-C++ files only.
namespace orvantile::platform::macos {

/// The system's material for heads-up displays, blurring what lies behind the window, always in its active
/// look. Seen only inside `region`, whose bounds the view is to fill.
/// `scale`: device pixels per point of the mask.
[[nodiscard]] NSVisualEffectView* makeBlurView(const QPainterPath& region, bool dark, double scale);

} // namespace orvantile::platform::macos
