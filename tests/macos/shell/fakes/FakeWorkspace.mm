#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeCollections.h"
#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/runtime/ClassTable.h"

using namespace orvantile::test;
using desktop::Observer;
using desktop::state;

NSNotificationName const NSWorkspaceDidActivateApplicationNotification =
    @"NSWorkspaceDidActivateApplicationNotification";
NSString* const NSWorkspaceApplicationKey = @"NSWorkspaceApplicationKey";

@interface NSRunningApplication () {
@public
    pid_t process;
}

@end

@implementation NSRunningApplication

@dynamic processIdentifier;

- (pid_t)processIdentifier {
    return process;
}

@end

@interface NSNotification () {
@public
    NSDictionary* info;
}

@end

@implementation NSNotification

@dynamic userInfo;

- (NSDictionary*)userInfo {
    return info;
}

@end

@implementation NSOperationQueue

+ (NSOperationQueue*)mainQueue {
    static NSOperationQueue* const queue = [[NSOperationQueue alloc] init];
    return queue;
}

- (NSString*)fakeDescription {
    return self == NSOperationQueue.mainQueue ? @"main" : @"other";
}

@end

@implementation NSNotificationCenter

- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification*))block {
    NSObject* token = [[NSObject alloc] init];
    if ([name isEqualToString:NSWorkspaceDidActivateApplicationNotification]) {
        state().activationBlocks.emplace((__bridge void*)token, Observer{token, block});
    }
    return token;
}

- (void)removeObserver:(id)observer {
    if (state().activationBlocks.erase((__bridge void*)observer) == 0) {
        objc::misuse("somebody is removed who does not observe");
    }
}

- (NSString*)fakeDescription {
    return @"of the workspace";
}

@end

@implementation NSURL {
    NSString* text;
}

+ (instancetype)URLWithString:(NSString*)text {
    if (!state().acceptsAddresses) {
        return nil;
    }
    NSURL* made = [[NSURL alloc] init];
    made->text = text;
    return made;
}

- (NSString*)fakeDescription {
    return text;
}

@end

@implementation NSWorkspace

@dynamic notificationCenter;
@dynamic frontmostApplication;

+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* const workspace = [[NSWorkspace alloc] init];
    return workspace;
}

- (NSNotificationCenter*)notificationCenter {
    static NSNotificationCenter* const center = [[NSNotificationCenter alloc] init];
    return center;
}

- (NSRunningApplication*)frontmostApplication {
    if (!state().frontmost) {
        return nil;
    }
    NSRunningApplication* application = [[NSRunningApplication alloc] init];
    application->process = *state().frontmost;
    return application;
}

- (BOOL)openURL:(NSURL*)url {
    if (url == nil) {
        objc::misuse("no address is opened");
    }
    return YES;
}

@end

namespace orvantile::test::desktop {

void setFrontmost(std::optional<int> processIdentifier) {
    state().frontmost = processIdentifier;
}

void postActivation(const Activation& activation) {
    const Pool pool;
    NSMutableDictionary* info = [NSMutableDictionary dictionary];
    if (activation.ofAnotherKind) {
        info[NSWorkspaceApplicationKey] = @"an application";
    } else if (activation.processIdentifier) {
        NSRunningApplication* application = [[NSRunningApplication alloc] init];
        application->process = *activation.processIdentifier;
        info[NSWorkspaceApplicationKey] = application;
    }
    NSNotification* notification = [[NSNotification alloc] init];
    notification->info = info;
    const auto blocks = state().activationBlocks;
    for (const auto& [token, observer] : blocks) {
        observer.block(notification);
    }
}

std::size_t activationObservers() {
    return state().activationBlocks.size();
}

} // namespace orvantile::test::desktop
