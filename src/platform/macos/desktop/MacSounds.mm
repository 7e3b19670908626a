#include "platform/macos/desktop/MacSounds.h"

#include "platform/macos/cocoa/Text.h"

#import <AppKit/AppKit.h>

namespace orvantile::platform::macos {

void MacSounds::play(const QString& name) {
    [[NSSound soundNamed:toNSString(name)] play];
}

} // namespace orvantile::platform::macos
