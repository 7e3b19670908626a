#pragma once

#include "platform/AccessibilityElement.h"
#include "platform/AccessibilityObserver.h"
#include "platform/Platform.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace orvantile {

/// Follows the frontmost application and reports each menu action that was fired by its keyboard shortcut.
///
/// A menu item that is selected while none of the application's menus is open was fired by its shortcut; a
/// pick from an open menu happens between that menu's opening and closing.
///
/// Main thread only. Held by shared pointer, so that work put off to a later turn can tell whether the
/// monitor still exists. Failures leave it attached to nothing; the next activation tries again.
class ShortcutMonitor : public std::enable_shared_from_this<ShortcutMonitor> {
public:
    /// Called once per action, on the main thread, never from inside `start()`. `shortcut` is absent when the
    /// item has no key equivalent; `title` is never empty.
    using Action = std::function<void(std::optional<QString> shortcut, QString title)>;

    /// Observes nothing until `start()`.
    explicit ShortcutMonitor(platform::Platform& platform);

    /// The client's sink; set before `start()`.
    Action onAction;

    /// Begins to follow the frontmost application. Meant to be called once; a second call leaves a second
    /// handler registered, which changes nothing.
    void start();

    /// The text of a special key's glyph code, or absent for a code without one.
    [[nodiscard]] static std::optional<QString> glyphCharacter(std::int64_t code);

    /// The name of a menu item, as it is; absent when it cannot be read.
    [[nodiscard]] static std::optional<QString> title(const platform::AccessibilityElement& element);

    /// The item's key equivalent as menus show it: ⌃ ⌥ ⇧ ⌘, then the key. Absent when it has none.
    [[nodiscard]] static std::optional<QString> shortcutString(const platform::AccessibilityElement& element);

private:
    void attach(std::int32_t processIdentifier);
    void detach();
    void handleNotification(const QString& name, const platform::AccessibilityElement& element);
    static void callback(platform::AccessibilityObserver& observer,
                         const platform::AccessibilityElement& element, const QString& notification,
                         void* reference);

    static constexpr std::int32_t none = -1;

    platform::Platform& platform;
    std::unique_ptr<platform::AccessibilityObserver> observer;
    std::int32_t observedPID = none;
    std::optional<platform::AccessibilityElement> observedAppElement;
    std::int64_t openMenus = 0; ///< never negative
    platform::Workspace::RegistrationToken workspaceObserver;
};

} // namespace orvantile
