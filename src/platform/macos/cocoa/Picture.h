#pragma once

#import <AppKit/AppKit.h>
#include <QImage>

// For Objective-C++ files only.
namespace orvantile::platform::macos {

/// A copy of the picture, in the sRGB colour space and as large in points as its device pixel ratio says; nil
/// for a null picture.
[[nodiscard]] NSImage* toNSImage(const QImage& picture);

} // namespace orvantile::platform::macos
