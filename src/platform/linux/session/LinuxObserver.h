#pragma once

#include "platform/AccessibilityObserver.h"

#include <cstdint>
#include <vector>

namespace orvantile::platform::session {

class ShortcutSource;

/// The observer of one process: passes on what the shortcut source concludes about it.
class LinuxObserver final : public AccessibilityObserver {
public:
    LinuxObserver(ShortcutSource& source, std::int32_t processIdentifier, Callback callback);
    LinuxObserver(const LinuxObserver&) = delete;
    LinuxObserver& operator=(const LinuxObserver&) = delete;
    ~LinuxObserver() override;

    bool addNotification(const AccessibilityElement& element, const QString& notification,
                         void* reference) override;
    void addToMainLoop() override;
    void removeFromMainLoop() override;

    [[nodiscard]] std::int32_t processIdentifier() const { return process; }

    /// The source no longer knows this observer, or is about to go.
    void wasDetached() { attached = false; }

    /// Calls back for each time `notification` was asked for.
    void post(const QString& notification, const AccessibilityElement& element);

private:
    struct Request {
        QString notification;
        void* reference;
    };

    ShortcutSource& source;
    bool attached = false; ///< false when there is nothing to detach from
    std::int32_t process;
    Callback callback;
    std::vector<Request> requests;
};

} // namespace orvantile::platform::session
