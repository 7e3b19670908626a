#include "platform/linux/session/LinuxObserver.h"

#include "platform/linux/session/ShortcutSource.h"

#include <utility>

namespace orvantile::platform::session {

LinuxObserver::LinuxObserver(ShortcutSource& source_, std::int32_t processIdentifier, Callback callback_)
    : source(source_),
      process(processIdentifier),
      callback(callback_) {}

LinuxObserver::~LinuxObserver() {
    LinuxObserver::removeFromMainLoop();
}

bool LinuxObserver::addNotification(const AccessibilityElement&, const QString& notification,
                                    void* reference) {
    requests.push_back({notification, reference});
    return true;
}

void LinuxObserver::addToMainLoop() {
    attached = true;
    source.attach(*this);
}

void LinuxObserver::removeFromMainLoop() {
    if (std::exchange(attached, false)) {
        source.detach(*this);
    }
}

void LinuxObserver::post(const QString& notification, const AccessibilityElement& element) {
    for (const auto& request : requests) {
        if (request.notification == notification) {
            callback(*this, element, notification, request.reference);
        }
    }
}

} // namespace orvantile::platform::session
