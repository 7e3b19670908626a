#pragma once

#include <Foundation/Foundation.h>

@interface NSScreen : NSObject
@property(class, readonly, strong) NSScreen* mainScreen;
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@property(readonly) NSRect visibleFrame;
@property(readonly) CGFloat backingScaleFactor;
@property(readonly) NSInteger maximumFramesPerSecond;
@end
