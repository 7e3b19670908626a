#include "platform/macos/application/MacActivation.h"

#include "platform/macos/application/SharedDelegate.h"

namespace orvantile::platform::macos {

void MacActivation::bringToFront(std::uintptr_t window) {
    [existingApplication() activateIgnoringOtherApps:YES];
    // The toolkit's identifier of a window is its view.
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(window);
    [view.window makeKeyAndOrderFront:nil];
}

} // namespace orvantile::platform::macos
