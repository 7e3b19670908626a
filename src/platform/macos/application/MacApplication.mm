#include "platform/macos/application/MacApplication.h"

#include "platform/macos/application/SharedDelegate.h"

#include <QtGlobal>
#include <utility>

namespace orvantile::platform::macos {

AppDelegate* sharedDelegate() {
    static AppDelegate* const delegate = [[AppDelegate alloc] init];
    return delegate;
}

NSApplication* existingApplication() {
    if (NSApp == nil) {
        qFatal("there is no application object yet");
    }
    return NSApp;
}

void MacApplication::prepare() {
    @autoreleasepool { // no loop turns yet that would bring one
        NSApplication* application = NSApplication.sharedApplication;
        application.delegate = sharedDelegate();
        [application setActivationPolicy:NSApplicationActivationPolicyAccessory];
    }
}

bool MacApplication::hasLaunched() {
    return sharedDelegate()->finishedLaunching;
}

void MacApplication::onLaunched(std::function<void()> handler) {
    sharedDelegate()->launched = std::move(handler);
}

void MacApplication::onReopened(std::function<void(bool hasVisibleWindows)> handler) {
    sharedDelegate()->reopened = std::move(handler);
}

} // namespace orvantile::platform::macos
