#pragma once

#include "platform/AccessibilityClient.h"

namespace orvantile::platform::macos {

/// The system's accessibility interface.
class MacAccessibilityClient final : public AccessibilityClient {
public:
    [[nodiscard]] bool isProcessTrusted() const override;

    /// The system shows a prompt of its own.
    void promptForTrust() override;

    [[nodiscard]] std::unique_ptr<AccessibilityObserver>
    createObserver(std::int32_t processIdentifier, AccessibilityObserver::Callback callback) override;
    [[nodiscard]] AccessibilityElement applicationElement(std::int32_t processIdentifier) override;
};

} // namespace orvantile::platform::macos
