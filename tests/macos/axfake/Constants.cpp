// The constants of the system that the product uses.

#include "macos/axfake/Objects.h"

#include <algorithm>
#include <array>

namespace orvantile::test::ax {
namespace {

Truth isTrue(true);
Truth isFalse(false);
String defaultMode(QStringLiteral("kCFRunLoopDefaultMode"));
String commonModes(QStringLiteral("kCFRunLoopCommonModes"));
String promptOption(QStringLiteral("AXTrustedCheckOptionPrompt"));
RunLoop mainLoop("main");
RunLoop otherLoop("other");

const std::array<Object*, 7> constants{&isTrue,       &isFalse,  &defaultMode, &commonModes,
                                       &promptOption, &mainLoop, &otherLoop};

} // namespace

Object* findConstant(const void* reference) {
    const auto* const found = std::ranges::find(constants, reference);
    return found == constants.end() ? nullptr : *found;
}

} // namespace orvantile::test::ax

namespace ax = orvantile::test::ax;

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = ax::toReference<CFBooleanRef>(ax::isTrue);
const CFBooleanRef kCFBooleanFalse = ax::toReference<CFBooleanRef>(ax::isFalse);
const CFRunLoopMode kCFRunLoopDefaultMode = ax::toReference<CFRunLoopMode>(ax::defaultMode);
const CFRunLoopMode kCFRunLoopCommonModes = ax::toReference<CFRunLoopMode>(ax::commonModes);
CFStringRef kAXTrustedCheckOptionPrompt = ax::toReference<CFStringRef>(ax::promptOption);
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{};

CFRunLoopRef CFRunLoopGetMain() {
    return ax::toReference<CFRunLoopRef>(ax::mainLoop);
}

/// Not the main one, as on any other thread: what belongs to the main loop is to ask for it by name.
CFRunLoopRef CFRunLoopGetCurrent() {
    return ax::toReference<CFRunLoopRef>(ax::otherLoop);
}
}
