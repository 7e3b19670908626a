#pragma once

#import <AppKit/AppKit.h>
#include <string>
#include <vector>

@interface NSView () {
@public
    std::vector<NSView*> views;
    __unsafe_unretained NSView* parent;
    __weak NSWindow* shownIn;
    bool isAccessible;
    std::string role;
    std::string label;
}

@end

@interface NSBitmapImageRep () {
@public
    long width;
    long height;
    std::vector<unsigned char> pixels;
    bool tagged;
}

@end

@interface NSImage () {
@public
    NSSize points;
    std::string symbol;
    std::string description;
    bool isTemplate;
    std::vector<NSImageRep*> representations;
}

@end
