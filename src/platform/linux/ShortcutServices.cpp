#include "platform/linux/ShortcutServices.h"

#include "platform/linux/applications/ReachDescription.h"
#include "platform/linux/session/LinuxAccessibility.h"
#include "platform/linux/session/LinuxWorkspace.h"

#include <QStringList>
#include <QTimer>
#include <unistd.h>
#include <utility>

namespace orvantile::platform {

using desktop::PermissionPrompt;
using Qt::StringLiterals::operator""_s;

ShortcutServices::ShortcutServices(session::DesktopSession& session_, Scheduler& scheduler, Hooks hooks_)
    : session(session_),
      hooks(std::move(hooks_)),
      menus([this] { session.drain(); }),
      source(session, menus.model(), getpid()),
      reports(session, source),
      prompt(scheduler, {.obstacle = [this] { return obstacle(); }, .turnOn = [this] { turnOn(); }}),
      settings([this](const auto& receiver) { askToken(receiver); }) {}

void ShortcutServices::provide(Platform& platform) {
    platform.workspace = std::make_unique<session::LinuxWorkspace>(source, [this] { settings.open(); });
    platform.accessibility = std::make_unique<session::LinuxAccessibility>(
        source, session, menus.model(), [this] { prompt.ask(); }, [this] { return details(); });
    awaitAccess(*platform.accessibility);
}

/// The user may give access elsewhere while the prompt is up.
void ShortcutServices::awaitAccess(AccessibilityClient& accessibility) {
    access = accessibility.onceTrustIsKnown([this, &accessibility] {
        prompt.reconsider();
        awaitAccess(accessibility);
    });
}

PermissionPrompt::Obstacle ShortcutServices::obstacle() const {
    if (!session.hearsKeys()) {
        return PermissionPrompt::Obstacle::noKeys;
    }
    return menus.model().isAvailable() ? PermissionPrompt::Obstacle::none
                                       : PermissionPrompt::Obstacle::accessibilityOff;
}

void ShortcutServices::turnOn() {
    menus.accessibilityBus().setEnabled(true);
    qtHelper.turnOn();
    publishBus();
    if (menus.accessibilityBus().address().empty()) {
        constexpr int busStartMilliseconds = 2000;
        QTimer::singleShot(busStartMilliseconds, &context, [this] { publishBus(); });
    }
}

QString ShortcutServices::details() const {
    QStringList paragraphs;
    if (const auto keys = session.keySources().trimmed(); !keys.isEmpty()) {
        paragraphs += keys;
    }
    if (const auto helper = qtHelper.description(); !helper.isEmpty()) {
        paragraphs += helper;
    }
    const auto process = source.latestApplication();
    if (const auto program = process ? applications::factsOf(*process) : std::nullopt) {
        const auto helper = !qtHelper.isInstalled() ? applications::Helper::missing
                            : qtHelper.isOn()       ? applications::Helper::on
                                                    : applications::Helper::off;
        paragraphs += applications::describeReach(*program, menus.model().reach(*process), helper);
    }
    return paragraphs.join(u"\n\n"_s);
}

void ShortcutServices::publishBus() const {
    const std::string address = menus.accessibilityBus().address();
    if (hooks.publishBus && !address.empty()) {
        hooks.publishBus(address);
    }
}

void ShortcutServices::askToken(const desktop::AccessibilitySettings::TokenReceiver& receiver) const {
    if (hooks.askToken) {
        hooks.askToken(receiver);
    } else {
        receiver({});
    }
}

} // namespace orvantile::platform
