#include "platform/macos/desktop/MacWorkspace.h"

#import <AppKit/AppKit.h>
#include <utility>
#include <vector>

namespace orvantile::platform::macos {
namespace {

using Registration = id<NSObject>;

std::optional<RunningApplication> activatedApplication(NSNotification* notification) {
    const id application = notification.userInfo[NSWorkspaceApplicationKey];
    if (![application isKindOfClass:[NSRunningApplication class]]) {
        return std::nullopt;
    }
    NSRunningApplication* running = application;
    return RunningApplication{running.processIdentifier};
}

} // namespace

struct MacWorkspace::Registrations {
    std::vector<Registration> all;
};

MacWorkspace::MacWorkspace() : registrations(std::make_unique<Registrations>()) {}

MacWorkspace::~MacWorkspace() {
    for (const auto& registration : registrations->all) {
        [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:registration];
    }
}

std::optional<RunningApplication> MacWorkspace::frontmostApplication() const {
    NSRunningApplication* application = NSWorkspace.sharedWorkspace.frontmostApplication;
    if (application == nil) {
        return std::nullopt;
    }
    return RunningApplication{application.processIdentifier};
}

Workspace::RegistrationToken MacWorkspace::observeActivations(ActivationHandler handler) {
    const auto shared = std::make_shared<const ActivationHandler>(std::move(handler));
    // The workspace posts to a notification centre of its own.
    const Registration registration = [NSWorkspace.sharedWorkspace.notificationCenter
        addObserverForName:NSWorkspaceDidActivateApplicationNotification
                    object:nil
                     queue:NSOperationQueue.mainQueue
                usingBlock:^(NSNotification* notification) {
                  (*shared)(activatedApplication(notification));
                }];
    registrations->all.push_back(registration);
    return std::make_shared<Registration>(registration);
}

void MacWorkspace::openAccessibilitySettings() {
    NSURL* page = [NSURL
        URLWithString:@"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"];
    if (page != nil) {
        [NSWorkspace.sharedWorkspace openURL:page];
    }
}

} // namespace orvantile::platform::macos
