#pragma once

#include "platform/AccessibilityObserver.h"
#include "platform/macos/support/CfHandle.h"

#include <ApplicationServices/ApplicationServices.h>
#include <deque>
#include <memory>

namespace orvantile::platform::macos {

/// Watches one process through the system's accessibility observer. Releasing that observer ends its
/// notifications and takes its source off the main run loop.
class MacAccessibilityObserver final : public AccessibilityObserver {
public:
    /// Null when the process cannot be observed.
    [[nodiscard]] static std::unique_ptr<MacAccessibilityObserver> create(pid_t process, Callback callback);

    MacAccessibilityObserver(CfHandle<AXObserverRef> observer, Callback callback);

    bool addNotification(const AccessibilityElement& element, const QString& notification,
                         void* reference) override;

    /// The source waits in the default mode, so nothing is heard while a menu of this program is open.
    void addToMainLoop() override;
    void removeFromMainLoop() override;

private:
    /// What the system hands back with a notification.
    struct Subscription {
        MacAccessibilityObserver& observer;
        void* reference;
    };

    static void notified(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                         void* context) noexcept;

    Callback callback;
    std::deque<Subscription> subscriptions; ///< the system keeps their addresses until `handle` is released
    CfHandle<AXObserverRef> handle;
};

} // namespace orvantile::platform::macos
