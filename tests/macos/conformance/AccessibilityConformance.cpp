// What the accessibility layer takes for granted about the system's C interfaces. It is only compiled: here
// against the declarations in `sdk`, on a Mac against the SDK itself, so that neither can differ unnoticed.

#include <ApplicationServices/ApplicationServices.h>
#include <CoreFoundation/CoreFoundation.h>
#include <cstddef>
#include <cstdint>
#include <dispatch/dispatch.h>
#include <type_traits>

namespace {

template <typename Actual, typename Expected>
constexpr bool same = std::is_same_v<Actual, Expected>;

// The process's trust.
static_assert(same<decltype(AXIsProcessTrusted), Boolean()>);
static_assert(same<decltype(AXIsProcessTrustedWithOptions), Boolean(CFDictionaryRef)>);
static_assert(std::is_convertible_v<decltype(kAXTrustedCheckOptionPrompt), CFStringRef>);
static_assert(std::is_convertible_v<Boolean, bool>);

// Elements.
static_assert(same<decltype(AXUIElementCreateApplication), AXUIElementRef(pid_t)>);
static_assert(
    same<decltype(AXUIElementCopyAttributeValue), AXError(AXUIElementRef, CFStringRef, CFTypeRef*)>);
static_assert(std::is_convertible_v<AXUIElementRef, CFTypeRef>);

// Observers.
static_assert(same<AXObserverCallback, void (*)(AXObserverRef, AXUIElementRef, CFStringRef, void*)>);
static_assert(same<decltype(AXObserverCreate), AXError(pid_t, AXObserverCallback, AXObserverRef*)>);
static_assert(
    same<decltype(AXObserverAddNotification), AXError(AXObserverRef, AXUIElementRef, CFStringRef, void*)>);
static_assert(same<decltype(AXObserverGetRunLoopSource), CFRunLoopSourceRef(AXObserverRef)>);
static_assert(std::is_convertible_v<AXObserverRef, CFTypeRef>);
static_assert(std::is_constructible_v<AXObserverCallback,
                                      void (*)(AXObserverRef, AXUIElementRef, CFStringRef, void*) noexcept>);

// Errors.
static_assert(sizeof(AXError) == 4);
static_assert(kAXErrorSuccess == 0);
static_assert(kAXErrorFailure == -25200);
static_assert(kAXErrorIllegalArgument == -25201);
static_assert(kAXErrorInvalidUIElement == -25202);
static_assert(kAXErrorInvalidUIElementObserver == -25203);
static_assert(kAXErrorCannotComplete == -25204);
static_assert(kAXErrorAttributeUnsupported == -25205);
static_assert(kAXErrorActionUnsupported == -25206);
static_assert(kAXErrorNotificationUnsupported == -25207);
static_assert(kAXErrorNotImplemented == -25208);
static_assert(kAXErrorNotificationAlreadyRegistered == -25209);
static_assert(kAXErrorNotificationNotRegistered == -25210);
static_assert(kAXErrorAPIDisabled == -25211);
static_assert(kAXErrorNoValue == -25212);
static_assert(kAXErrorParameterizedAttributeUnsupported == -25213);
static_assert(kAXErrorNotEnoughPrecision == -25214);

// Objects.
static_assert(same<CFTypeRef, const void*>);
static_assert(same<decltype(CFRetain), CFTypeRef(CFTypeRef)>);
static_assert(same<decltype(CFRelease), void(CFTypeRef)>);
static_assert(same<decltype(CFGetTypeID), CFTypeID(CFTypeRef)>);
static_assert(sizeof(Boolean) == 1 && std::is_unsigned_v<Boolean>);
static_assert(sizeof(CFIndex) == 8 && std::is_signed_v<CFIndex>);
static_assert(sizeof(CFTypeID) == 8 && std::is_unsigned_v<CFTypeID>);
static_assert(std::is_convertible_v<decltype(kCFAllocatorDefault), CFAllocatorRef>);

// Strings, whose characters are those of a QString.
static_assert(sizeof(UniChar) == sizeof(char16_t) && alignof(UniChar) == alignof(char16_t));
static_assert(std::is_unsigned_v<UniChar>);
static_assert(same<decltype(CFStringGetTypeID), CFTypeID()>);
static_assert(
    same<decltype(CFStringCreateWithCharacters), CFStringRef(CFAllocatorRef, const UniChar*, CFIndex)>);
static_assert(same<decltype(CFStringGetLength), CFIndex(CFStringRef)>);
static_assert(same<decltype(CFStringGetCharacters), void(CFStringRef, CFRange, UniChar*)>);
static_assert(sizeof(CFRange) == 16 && offsetof(CFRange, location) == 0 && offsetof(CFRange, length) == 8);

// Numbers.
static_assert(same<decltype(CFNumberGetTypeID), CFTypeID()>);
static_assert(same<decltype(CFNumberGetValue), Boolean(CFNumberRef, CFNumberType, void*)>);
static_assert(sizeof(CFNumberType) == sizeof(CFIndex));
static_assert(kCFNumberSInt64Type == 4);
static_assert(sizeof(std::int64_t) == 8);

// Dictionaries.
static_assert(same<decltype(CFDictionaryCreate),
                   CFDictionaryRef(CFAllocatorRef, const void**, const void**, CFIndex,
                                   const CFDictionaryKeyCallBacks*, const CFDictionaryValueCallBacks*)>);
static_assert(same<decltype(kCFTypeDictionaryKeyCallBacks), const CFDictionaryKeyCallBacks>);
static_assert(same<decltype(kCFTypeDictionaryValueCallBacks), const CFDictionaryValueCallBacks>);
static_assert(sizeof(CFDictionaryKeyCallBacks) == 48 && sizeof(CFDictionaryValueCallBacks) == 40);
static_assert(std::is_convertible_v<decltype(kCFBooleanTrue), CFBooleanRef>);

// The main run loop and the main queue.
static_assert(same<decltype(CFRunLoopGetMain), CFRunLoopRef()>);
static_assert(same<decltype(CFRunLoopAddSource), void(CFRunLoopRef, CFRunLoopSourceRef, CFRunLoopMode)>);
static_assert(same<decltype(CFRunLoopRemoveSource), void(CFRunLoopRef, CFRunLoopSourceRef, CFRunLoopMode)>);
static_assert(std::is_convertible_v<decltype(kCFRunLoopDefaultMode), CFRunLoopMode>);
static_assert(same<CFRunLoopMode, CFStringRef>);
static_assert(same<dispatch_function_t, void (*)(void*)>);
static_assert(std::is_convertible_v<decltype(&dispatch_async_f),
                                    void (*)(dispatch_queue_t, void*, dispatch_function_t)>);
static_assert(std::is_convertible_v<decltype(dispatch_get_main_queue()), dispatch_queue_t>);
static_assert(
    std::is_convertible_v<decltype(&dispatch_time), dispatch_time_t (*)(dispatch_time_t, std::int64_t)>);
static_assert(std::is_convertible_v<decltype(&dispatch_after_f),
                                    void (*)(dispatch_time_t, dispatch_queue_t, void*, dispatch_function_t)>);
static_assert(DISPATCH_TIME_NOW == 0 && NSEC_PER_SEC == 1000000000);

} // namespace
