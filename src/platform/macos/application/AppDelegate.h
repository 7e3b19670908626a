#pragma once

#import <AppKit/AppKit.h>
#include <functional>
#include <memory>

namespace orvantile::platform::macos {

class StatusMenu;

} // namespace orvantile::platform::macos

// For Objective-C++ files only.

/// What the system tells of launching, of a second launch and of the status menu. The toolkit's own delegate
/// passes the application's messages on to this one.
@interface AppDelegate : NSObject <NSApplicationDelegate, NSMenuDelegate> {
@public
    bool finishedLaunching;
    std::function<void()> launched;
    std::function<void(bool hasVisibleWindows)> reopened;
    std::weak_ptr<orvantile::platform::macos::StatusMenu> statusMenu; ///< while there is one
}

// The actions of the status menu.
- (void)toggleEnabled;
- (void)openPreferences;
- (void)checkForUpdates;
@end
