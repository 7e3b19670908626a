#include "platform/macos/application/MacActivation.h"

#include "platform/macos/application/SharedDelegate.h"

namespace orvantile::platform::macos {
namespace {

/// The toolkit makes every window resizable and keeps only its size.
constexpr NSWindowStyleMask windowStyle =
    NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable;

} // namespace

void MacActivation::bringToFront(std::uintptr_t window) {
    // The toolkit's identifier of a window is its view.
    NSView* view = (__bridge NSView*)reinterpret_cast<void*>(window);
    NSWindow* shown = view.window;
    if (shown.styleMask != windowStyle) { // setting it again would take the focus from its views
        shown.styleMask = windowStyle;
        shown.releasedWhenClosed = NO;
    }
    [existingApplication() activateIgnoringOtherApps:YES];
    [shown makeKeyAndOrderFront:nil];
}

} // namespace orvantile::platform::macos
