#pragma once

#include <Foundation/Foundation.h>
#include <sys/types.h>

extern "C" NSNotificationName const NSWorkspaceDidActivateApplicationNotification;
extern "C" NSString* const NSWorkspaceApplicationKey;

@interface NSRunningApplication : NSObject
@property(readonly) pid_t processIdentifier;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(readonly, strong) NSNotificationCenter* notificationCenter;
@property(readonly, strong) NSRunningApplication* frontmostApplication;
- (BOOL)openURL:(NSURL*)url;
@end
