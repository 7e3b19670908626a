#include "platform/macos/cocoa/Picture.h"

#include <cstring>

namespace orvantile::platform::macos {
namespace {

constexpr NSInteger bitsPerSample = 8;
constexpr NSInteger samplesPerPixel = 4; // red, green, blue, alpha: the order in memory

} // namespace

NSImage* toNSImage(const QImage& picture) {
    if (picture.isNull()) {
        return nil;
    }
    const auto pixels = picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    NSBitmapImageRep* untagged =
        [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                pixelsWide:pixels.width()
                                                pixelsHigh:pixels.height()
                                             bitsPerSample:bitsPerSample
                                           samplesPerPixel:samplesPerPixel
                                                  hasAlpha:YES
                                                  isPlanar:NO
                                            colorSpaceName:NSDeviceRGBColorSpace
                                               bytesPerRow:0 // chosen by the representation
                                              bitsPerPixel:bitsPerSample * samplesPerPixel];
    if (untagged == nil) {
        return nil;
    }
    const auto rowLength = static_cast<std::size_t>(pixels.width() * samplesPerPixel);
    for (int y = 0; y < pixels.height(); ++y) {
        std::memcpy(untagged.bitmapData + y * untagged.bytesPerRow, pixels.constScanLine(y), rowLength);
    }
    NSBitmapImageRep* representation =
        [untagged bitmapImageRepByRetaggingWithColorSpace:NSColorSpace.sRGBColorSpace];
    const auto points = picture.deviceIndependentSize();
    const NSSize size = NSMakeSize(points.width(), points.height());
    representation.size = size;
    NSImage* image = [[NSImage alloc] initWithSize:size];
    [image addRepresentation:representation];
    return image;
}

} // namespace orvantile::platform::macos
