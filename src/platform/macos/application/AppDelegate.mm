#include "platform/macos/application/AppDelegate.h"

#include "platform/macos/cocoa/Text.h"
#include "platform/macos/statusitem/StatusMenu.h"

@implementation AppDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    finishedLaunching = true;
    if (launched) {
        launched();
    }
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows {
    if (reopened) {
        reopened(hasVisibleWindows);
    }
    return YES;
}

- (void)menuWillOpen:(NSMenu*)menu {
    if (const auto opening = statusMenu.lock(); opening && opening->isShownBy(menu)) {
        opening->willOpen();
    }
}

- (void)toggleEnabled {
    [self choose:_cmd];
}

- (void)openPreferences {
    [self choose:_cmd];
}

- (void)checkForUpdates {
    [self choose:_cmd];
}

- (void)choose:(SEL)command {
    if (const auto menu = statusMenu.lock()) {
        menu->choose(orvantile::platform::macos::toQString(NSStringFromSelector(command)));
    }
}

@end
