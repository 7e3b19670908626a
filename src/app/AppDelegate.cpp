#include "app/AppDelegate.h"

#include "app/ActionLabel.h"

namespace orvantile {

AppDelegate::AppDelegate(platform::Platform& platform_)
    : platform(platform_),
      monitor(std::make_shared<ShortcutMonitor>(platform)),
      hud(HUDController::shared()) {}

void AppDelegate::applicationDidFinishLaunching() {
    auto& settings = Settings::shared();
    monitor->onAction = [&settings, delegate = weak_from_this()](std::optional<QString> shortcut,
                                                                 const QString& title) {
        if (const auto label = actionLabel(settings, shortcut, title)) {
            if (const auto self = delegate.lock()) {
                self->hud->show(*label);
            }
        }
    };
    monitor->start();
    if (!platform.accessibility->isProcessTrusted()) {
        platform.accessibility->promptForTrust();
    }
}

} // namespace orvantile
