#pragma once

#include <Foundation/Foundation.h>

typedef NSString* NSColorSpaceName;
extern "C" NSColorSpaceName const NSDeviceRGBColorSpace;

@interface NSColor : NSObject
@property(class, readonly, strong) NSColor* clearColor;
@end

@interface NSColorSpace : NSObject
@property(class, readonly, strong) NSColorSpace* sRGBColorSpace;
@end

@interface NSImageRep : NSObject
@property NSSize size;
@end

@interface NSBitmapImageRep : NSImageRep
@property(readonly) unsigned char* bitmapData;
@property(readonly) NSInteger bytesPerRow;
- (instancetype)initWithBitmapDataPlanes:(unsigned char**)planes
                              pixelsWide:(NSInteger)width
                              pixelsHigh:(NSInteger)height
                           bitsPerSample:(NSInteger)bitsPerSample
                         samplesPerPixel:(NSInteger)samplesPerPixel
                                hasAlpha:(BOOL)alpha
                                isPlanar:(BOOL)isPlanar
                          colorSpaceName:(NSColorSpaceName)colorSpaceName
                             bytesPerRow:(NSInteger)bytesPerRow
                            bitsPerPixel:(NSInteger)bitsPerPixel;
- (NSBitmapImageRep*)bitmapImageRepByRetaggingWithColorSpace:(NSColorSpace*)colorSpace;
@end

@interface NSImage : NSObject
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description;
- (void)setTemplate:(BOOL)isTemplate;
- (instancetype)initWithSize:(NSSize)size;
- (void)addRepresentation:(NSImageRep*)representation;
@end
