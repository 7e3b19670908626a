#include "platform/macos/accessibility/MacAccessibilityObserver.h"

#include "platform/macos/accessibility/AxElementNode.h"
#include "platform/macos/support/CfText.h"

#include <utility>

namespace orvantile::platform::macos {

std::unique_ptr<MacAccessibilityObserver> MacAccessibilityObserver::create(pid_t process, Callback callback) {
    AXObserverRef created = nullptr;
    if (AXObserverCreate(process, &MacAccessibilityObserver::notified, &created) != kAXErrorSuccess ||
        created == nullptr) {
        return nullptr;
    }
    return std::make_unique<MacAccessibilityObserver>(CfHandle<AXObserverRef>::adopt(created), callback);
}

MacAccessibilityObserver::MacAccessibilityObserver(CfHandle<AXObserverRef> observer, Callback callback_)
    : callback(callback_),
      handle(std::move(observer)) {}

bool MacAccessibilityObserver::addNotification(const AccessibilityElement& element,
                                               const QString& notification, void* reference) {
    const auto* node = dynamic_cast<const AxElementNode*>(&element.target());
    const auto name = toCfString(notification);
    if (node == nullptr || node->element() == nullptr || !name) {
        return false;
    }
    auto& subscription = subscriptions.emplace_back(Subscription{*this, reference});
    if (AXObserverAddNotification(handle.get(), node->element(), name.get(), &subscription) !=
        kAXErrorSuccess) {
        subscriptions.pop_back();
        return false;
    }
    return true;
}

void MacAccessibilityObserver::addToMainLoop() {
    CFRunLoopAddSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(handle.get()), kCFRunLoopDefaultMode);
}

void MacAccessibilityObserver::removeFromMainLoop() {
    CFRunLoopRemoveSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(handle.get()),
                          kCFRunLoopDefaultMode);
}

void MacAccessibilityObserver::notified(AXObserverRef, AXUIElementRef element, CFStringRef notification,
                                        void* context) noexcept {
    if (context == nullptr) {
        return;
    }
    const auto& subscription = *static_cast<const Subscription*>(context);
    auto& self = subscription.observer;
    self.callback(self, makeAccessibilityElement(CfHandle<AXUIElementRef>::retain(element)),
                  toQString(notification), subscription.reference);
}

} // namespace orvantile::platform::macos
