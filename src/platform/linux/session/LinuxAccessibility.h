#pragma once

#include "platform/AccessibilityClient.h"
#include "platform/linux/session/ShortcutSource.h"

#include <functional>
#include <memory>
#include <vector>

namespace orvantile::platform::session {

/// The accessibility client of this desktop: the bus and a source of keys.
class LinuxAccessibility final : public AccessibilityClient {
public:
    LinuxAccessibility(ShortcutSource& source, DesktopSession& session, a11y::MenuModel& menus,
                       std::function<void()> prompt, std::function<QString()> details = {});

    LinuxAccessibility(const LinuxAccessibility&) = delete;
    LinuxAccessibility& operator=(const LinuxAccessibility&) = delete;
    ~LinuxAccessibility() override;

    [[nodiscard]] bool isProcessTrusted() const override;
    [[nodiscard]] TrustToken onceTrustIsKnown(std::function<void()> handler) override;
    [[nodiscard]] QString permissionDetails() const override;
    void promptForTrust() override;
    [[nodiscard]] std::unique_ptr<AccessibilityObserver>
    createObserver(std::int32_t processIdentifier, AccessibilityObserver::Callback callback) override;
    [[nodiscard]] AccessibilityElement applicationElement(std::int32_t processIdentifier) override;

private:
    ShortcutSource& source;
    DesktopSession& session;
    a11y::MenuModel& menus;
    std::function<void()> prompt;
    std::vector<std::weak_ptr<const std::function<void()>>> waiting;
    std::function<QString()> details; ///< may be empty
};

} // namespace orvantile::platform::session
