#include "platform/linux/session/LinuxAccessibility.h"

#include "platform/linux/session/ApplicationNode.h"

#include <utility>

namespace orvantile::platform::session {

LinuxAccessibility::LinuxAccessibility(ShortcutSource& source_, DesktopSession& session_,
                                       a11y::MenuModel& menus_, std::function<void()> prompt_,
                                       std::function<QString()> details_)
    : source(source_),
      session(session_),
      menus(menus_),
      prompt(std::move(prompt_)),
      details(std::move(details_)) {
    menus.onAvailable = [this] {
        for (const auto& each : std::exchange(waiting, {})) {
            if (const auto handler = each.lock()) {
                (*handler)();
            }
        }
    };
}

LinuxAccessibility::~LinuxAccessibility() {
    menus.onAvailable = nullptr;
}

bool LinuxAccessibility::isProcessTrusted() const {
    return menus.isAvailable() && session.hearsKeys();
}

AccessibilityClient::TrustToken LinuxAccessibility::onceTrustIsKnown(std::function<void()> handler) {
    std::erase_if(waiting, [](const auto& each) { return each.expired(); });
    const auto kept = std::make_shared<const std::function<void()>>(std::move(handler));
    waiting.push_back(kept);
    return kept;
}

QString LinuxAccessibility::permissionDetails() const {
    return details ? details() : QString();
}

void LinuxAccessibility::promptForTrust() {
    prompt();
}

std::unique_ptr<AccessibilityObserver>
LinuxAccessibility::createObserver(std::int32_t processIdentifier, AccessibilityObserver::Callback callback) {
    return source.createObserver(processIdentifier, callback);
}

AccessibilityElement LinuxAccessibility::applicationElement(std::int32_t processIdentifier) {
    return AccessibilityElement(std::make_shared<ApplicationNode>(processIdentifier));
}

} // namespace orvantile::platform::session
