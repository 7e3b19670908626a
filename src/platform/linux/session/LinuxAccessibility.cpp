#include "platform/linux/session/LinuxAccessibility.h"

#include "platform/linux/session/ApplicationNode.h"

#include <utility>

namespace orvantile::platform::session {

LinuxAccessibility::LinuxAccessibility(ShortcutSource& source_, DesktopSession& session_,
                                       a11y::MenuModel& menus_, std::function<void()> prompt_)
    : source(source_),
      session(session_),
      menus(menus_),
      prompt(std::move(prompt_)) {}

bool LinuxAccessibility::isProcessTrusted() const {
    return menus.isAvailable() && session.hearsKeys();
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
