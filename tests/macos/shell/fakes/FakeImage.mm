#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/fakes/FakeView.h"
#include "macos/shell/runtime/ClassTable.h"

using namespace orvantile::test;
using desktop::state;

NSColorSpaceName const NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";

@implementation NSColor

+ (NSColor*)clearColor {
    static NSColor* const color = [[NSColor alloc] init];
    return color;
}

- (NSString*)fakeDescription {
    return @"clear";
}

@end

@implementation NSColorSpace

+ (NSColorSpace*)sRGBColorSpace {
    static NSColorSpace* const space = [[NSColorSpace alloc] init];
    return space;
}

- (NSString*)fakeDescription {
    return @"sRGB";
}

@end

@implementation NSImageRep

@synthesize size;

@end

@implementation NSBitmapImageRep

@dynamic bitmapData;
@dynamic bytesPerRow;

- (instancetype)initWithBitmapDataPlanes:(unsigned char**)planes
                              pixelsWide:(NSInteger)newWidth
                              pixelsHigh:(NSInteger)newHeight
                           bitsPerSample:(NSInteger)bitsPerSample
                         samplesPerPixel:(NSInteger)samplesPerPixel
                                hasAlpha:(BOOL)alpha
                                isPlanar:(BOOL)isPlanar
                          colorSpaceName:(NSColorSpaceName)colorSpaceName
                             bytesPerRow:(NSInteger)bytesPerRow
                            bitsPerPixel:(NSInteger)bitsPerPixel {
    if (planes != nullptr || newWidth <= 0 || newHeight <= 0 || bitsPerSample != 8 || samplesPerPixel != 4 ||
        !alpha || isPlanar || bytesPerRow != 0 || bitsPerPixel != 32) {
        objc::misuse("a bitmap of a kind that is not used");
    }
    width = newWidth;
    height = newHeight;
    pixels.assign(static_cast<std::size_t>(self.bytesPerRow * height), 0);
    return self;
}

- (unsigned char*)bitmapData {
    return pixels.data();
}

- (NSInteger)bytesPerRow {
    constexpr long padding = 32; // rows are longer than their pixels
    return width * 4 + padding;
}

- (NSBitmapImageRep*)bitmapImageRepByRetaggingWithColorSpace:(NSColorSpace*)colorSpace {
    NSBitmapImageRep* copy = [[NSBitmapImageRep alloc] init];
    copy->width = width;
    copy->height = height;
    copy->pixels = pixels;
    copy->tagged = true;
    return copy;
}

@end

@implementation NSImage

+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    if (!state().symbolNames.contains(utf8(name))) {
        return nil;
    }
    NSImage* image = [[NSImage alloc] init];
    image->symbol = utf8(name);
    image->description = utf8(description);
    return image;
}

- (instancetype)initWithSize:(NSSize)size {
    points = size;
    return self;
}

- (void)setTemplate:(BOOL)newTemplate {
    isTemplate = newTemplate;
}

- (void)addRepresentation:(NSImageRep*)representation {
    representations.push_back(representation);
}

- (NSString*)fakeDescription {
    return nsString(symbol.empty() ? "picture" : symbol);
}

@end

void desktop::setSymbolNames(const std::set<std::string>& names) {
    state().symbolNames = names;
}
