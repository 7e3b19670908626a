#include "platform/macos/panel/PictureView.h"

#import <QuartzCore/CALayer.h>

@implementation OrvantilePictureView

@synthesize picture = _picture;

- (BOOL)wantsUpdateLayer {
    return YES;
}

- (void)setPicture:(NSImage*)picture {
    _picture = picture;
    self.needsDisplay = YES;
}

- (void)updateLayer {
    self.layer.contents = self.picture;
}

@end
