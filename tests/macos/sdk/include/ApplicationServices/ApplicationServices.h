// What the product calls of the accessibility client interface, declared for machines without the SDK. Tests
// only.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <sys/types.h>

extern "C" {

enum AXError : SInt32 {
    kAXErrorSuccess = 0,
    kAXErrorFailure = -25200,
    kAXErrorIllegalArgument = -25201,
    kAXErrorInvalidUIElement = -25202,
    kAXErrorInvalidUIElementObserver = -25203,
    kAXErrorCannotComplete = -25204,
    kAXErrorAttributeUnsupported = -25205,
    kAXErrorActionUnsupported = -25206,
    kAXErrorNotificationUnsupported = -25207,
    kAXErrorNotImplemented = -25208,
    kAXErrorNotificationAlreadyRegistered = -25209,
    kAXErrorNotificationNotRegistered = -25210,
    kAXErrorAPIDisabled = -25211,
    kAXErrorNoValue = -25212,
    kAXErrorParameterizedAttributeUnsupported = -25213,
    kAXErrorNotEnoughPrecision = -25214,
};

typedef const struct __AXUIElement* AXUIElementRef;
typedef struct __AXObserver* AXObserverRef;
typedef void (*AXObserverCallback)(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                   void* refcon);

extern CFStringRef kAXTrustedCheckOptionPrompt;
Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options);

AXUIElementRef AXUIElementCreateApplication(pid_t pid);
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value);

AXError AXObserverCreate(pid_t application, AXObserverCallback callback, AXObserverRef* outObserver);
AXError AXObserverAddNotification(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                  void* refcon);
CFRunLoopSourceRef AXObserverGetRunLoopSource(AXObserverRef observer);
}
