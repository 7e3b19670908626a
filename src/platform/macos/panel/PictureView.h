#pragma once

#import <AppKit/AppKit.h>

// For Objective-C++ files only.

/// A picture that fills the view, scaled by the compositor rather than drawn anew.
@interface OrvantilePictureView : NSView
@property(nonatomic, strong) NSImage* picture;
@end
