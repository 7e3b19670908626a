#pragma once

#include "platform/Platform.h"
#include "platform/linux/desktop/PermissionPrompt.h"
#include "platform/linux/desktop/accessibilitysettings/AccessibilitySettings.h"
#include "platform/linux/helper/ReportFeed.h"
#include "platform/linux/helper/switch/HelperSwitch.h"
#include "platform/linux/menus/LinuxMenus.h"
#include "platform/linux/session/ShortcutSource.h"

#include <QObject>
#include <functional>
#include <memory>
#include <string>

namespace orvantile::platform {

/// What every window system needs to tell shortcuts: menus, their join with keys, the permission.
class ShortcutServices {
public:
    /// What a window system does of its own; each may be empty.
    struct Hooks {
        /// Tells toolkits the address of the accessibility bus.
        std::function<void(const std::string& address)> publishBus;

        /// Asks for the token that lets a window of settings come to the front.
        std::function<void(const desktop::AccessibilitySettings::TokenReceiver&)> askToken;
    };

    /// `session` and `scheduler` must outlive it.
    ShortcutServices(session::DesktopSession& session, Scheduler& scheduler, Hooks hooks);
    ShortcutServices(const ShortcutServices&) = delete;
    ShortcutServices& operator=(const ShortcutServices&) = delete;
    ~ShortcutServices() = default;

    /// Makes the peers of `platform` that use them, which this must outlive.
    void provide(Platform& platform);

private:
    [[nodiscard]] desktop::PermissionPrompt::Obstacle obstacle() const;
    void awaitAccess(AccessibilityClient& accessibility);
    void turnOn();

    /// What the permission amounts to, for the user: the helper's state, and what the program used last
    /// tells.
    [[nodiscard]] QString details() const;
    void publishBus() const;
    void askToken(const desktop::AccessibilitySettings::TokenReceiver& receiver) const;

    session::DesktopSession& session;
    Hooks hooks;
    menus::LinuxMenus menus;
    session::ShortcutSource source;
    helper::ReportFeed reports;
    helper::HelperSwitch qtHelper{helper::HelperFiles(helper::HelperFiles::Places::ofUser())};
    desktop::PermissionPrompt prompt;
    desktop::AccessibilitySettings settings;
    AccessibilityClient::TrustToken access;
    QObject context;
};

} // namespace orvantile::platform
