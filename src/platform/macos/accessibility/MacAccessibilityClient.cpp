#include "platform/macos/accessibility/MacAccessibilityClient.h"

#include "platform/macos/accessibility/AxElementNode.h"
#include "platform/macos/accessibility/MacAccessibilityObserver.h"

namespace orvantile::platform::macos {

bool MacAccessibilityClient::isProcessTrusted() const {
    return AXIsProcessTrusted();
}

void MacAccessibilityClient::promptForTrust() {
    const void* key = kAXTrustedCheckOptionPrompt;
    const void* value = kCFBooleanTrue;
    const auto options = CfHandle<CFDictionaryRef>::adopt(
        CFDictionaryCreate(kCFAllocatorDefault, &key, &value, 1, &kCFTypeDictionaryKeyCallBacks,
                           &kCFTypeDictionaryValueCallBacks));
    // The answer is how things were before the prompt, which the user has yet to see.
    static_cast<void>(AXIsProcessTrustedWithOptions(options.get()));
}

std::unique_ptr<AccessibilityObserver>
MacAccessibilityClient::createObserver(std::int32_t processIdentifier,
                                       AccessibilityObserver::Callback callback) {
    return MacAccessibilityObserver::create(processIdentifier, callback);
}

AccessibilityElement MacAccessibilityClient::applicationElement(std::int32_t processIdentifier) {
    return makeAccessibilityElement(
        CfHandle<AXUIElementRef>::adopt(AXUIElementCreateApplication(processIdentifier)));
}

} // namespace orvantile::platform::macos
