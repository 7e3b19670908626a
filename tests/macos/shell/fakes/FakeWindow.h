#pragma once

#import <AppKit/AppKit.h>

@interface NSWindow () {
@public
    NSRect frameRect;
    bool visible;
    bool isClosed;
}

@end
