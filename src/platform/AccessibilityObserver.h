#pragma once

#include "platform/AccessibilityElement.h"

#include <QString>

namespace orvantile::platform {

/// Watches one application and reports its accessibility notifications. Destroying it ends all its
/// notifications. Main thread only.
class AccessibilityObserver {
public:
    /// Called on the main thread from the main loop, never from inside an operation of the observer.
    /// `reference` is what `addNotification` was given.
    using Callback = void (*)(AccessibilityObserver& observer, const AccessibilityElement& element,
                              const QString& notification, void* reference);

    AccessibilityObserver() = default;
    AccessibilityObserver(const AccessibilityObserver&) = delete;
    AccessibilityObserver& operator=(const AccessibilityObserver&) = delete;
    virtual ~AccessibilityObserver() = default;

    /// Asks for `notification` about `element`. False when the application does not serve it.
    virtual bool addNotification(const AccessibilityElement& element, const QString& notification,
                                 void* reference) = 0;

    /// Callbacks are made only between these two.
    virtual void addToMainLoop() = 0;
    virtual void removeFromMainLoop() = 0;
};

} // namespace orvantile::platform
