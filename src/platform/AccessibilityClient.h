#pragma once

#include "platform/AccessibilityObserver.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

namespace orvantile::platform {

/// The desktop's accessibility interface, as a client of it. Main thread only.
class AccessibilityClient {
public:
    AccessibilityClient() = default;
    AccessibilityClient(const AccessibilityClient&) = delete;
    AccessibilityClient& operator=(const AccessibilityClient&) = delete;
    virtual ~AccessibilityClient() = default;

    /// Whether this process may observe other applications at this moment; read live, never cached.
    [[nodiscard]] virtual bool isProcessTrusted() const = 0;

    using TrustToken = std::shared_ptr<const void>;

    /// Where the desktop's answer takes time, so that trust is denied when the program has just started:
    /// calls `handler` from the main loop, once, when it is granted for the first time. Releasing the token
    /// ends it.
    [[nodiscard]] virtual TrustToken onceTrustIsKnown(std::function<void()> /*handler*/) { return {}; }

    /// More about the state of that permission, for the user to read where they look for it; may be empty.
    [[nodiscard]] virtual QString permissionDetails() const { return {}; }

    /// Lets the desktop ask the user for that permission. Returns at once.
    virtual void promptForTrust() = 0;

    /// An observer of the process, or null when it cannot be observed (this program's own process, for one).
    [[nodiscard]] virtual std::unique_ptr<AccessibilityObserver>
    createObserver(std::int32_t processIdentifier, AccessibilityObserver::Callback callback) = 0;

    /// The element that stands for the whole application.
    [[nodiscard]] virtual AccessibilityElement applicationElement(std::int32_t processIdentifier) = 0;
};

} // namespace orvantile::platform
