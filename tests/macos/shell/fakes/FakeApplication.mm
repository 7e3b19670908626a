#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeCollections.h"
#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/runtime/ClassTable.h"

#include <algorithm>

using namespace orvantile::test;
using desktop::state;

NSAppearanceName const NSAppearanceNameAqua = @"NSAppearanceNameAqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";
NSApplication* NSApp = nil;

@implementation NSResponder
@end

@interface NSAppearance () {
@public
    NSString* name;
}

@end

@implementation NSAppearance

+ (NSAppearance*)appearanceNamed:(NSAppearanceName)name {
    NSAppearance* made = [[NSAppearance alloc] init];
    made->name = name;
    return made;
}

- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names {
    std::string order;
    for (NSUInteger index = 0; index < names.count; ++index) {
        order += utf8(names[index]) + " ";
    }
    if (order != "NSAppearanceNameDarkAqua NSAppearanceNameAqua ") {
        objc::misuse("appearances are matched against " + order);
    }
    for (NSUInteger index = 0; index < names.count; ++index) {
        if (name != nil && [names[index] isEqualToString:name]) {
            return names[index];
        }
    }
    return nil;
}

- (NSString*)fakeDescription {
    return name;
}

@end

@implementation NSApplication

@synthesize delegate;
@dynamic effectiveAppearance;

+ (NSApplication*)sharedApplication {
    if (NSApp == nil) {
        NSApp = [[NSApplication alloc] init];
    }
    return NSApp;
}

- (NSAppearance*)effectiveAppearance {
    const auto dark = state().dark;
    NSString* name = !dark   ? @"NSAppearanceNameOther"
                     : *dark ? NSAppearanceNameDarkAqua
                             : NSAppearanceNameAqua;
    return [NSAppearance appearanceNamed:name];
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    return YES;
}

- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps {
}

- (void)terminate:(id)sender {
}

- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
    if (utf8(keyPath) != "effectiveAppearance") {
        objc::misuse("the application has no key " + utf8(keyPath));
    }
    state().appearanceObservers.emplace_back(observer, context);
}

- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context {
    const auto removed = std::erase_if(state().appearanceObservers,
                                       [&](const auto& entry) { return entry.first == observer; });
    if (removed == 0) {
        objc::misuse("somebody is removed who does not observe");
    }
}

@end

namespace orvantile::test::desktop {

void finishLaunching() {
    const Pool pool;
    [NSApp.delegate applicationDidFinishLaunching:[[NSNotification alloc] init]];
}

bool launchAgain(bool hasVisibleWindows) {
    const Pool pool;
    return [NSApp.delegate applicationShouldHandleReopen:NSApp hasVisibleWindows:hasVisibleWindows];
}

bool hasDelegate() {
    const Pool pool;
    return NSApp.delegate != nil;
}

void removeApplicationObject() {
    NSApp = nil;
}

void setDark(std::optional<bool> dark) {
    const Pool pool;
    state().dark = dark;
    const auto observers = state().appearanceObservers;
    for (const auto& [observer, context] : observers) {
        [observer observeValueForKeyPath:@"effectiveAppearance" ofObject:NSApp change:nil context:context];
    }
}

std::size_t appearanceObservers() {
    return state().appearanceObservers.size();
}

} // namespace orvantile::test::desktop
