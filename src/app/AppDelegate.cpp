#include "app/AppDelegate.h"

#include "app/ActionLabel.h"
#include "app/SparkleUpdater.h"
#include "trace/Trace.h"

#include <utility>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr int enabledTag = 1;

std::optional<QString> composeLabel(const std::optional<QString>& shortcut, const QString& title) {
    const trace::Span span(trace::Step::label);
    return actionLabel(Settings::shared(), shortcut, title);
}

} // namespace

AppDelegate::AppDelegate(platform::Platform& platform_, WindowFactory makePreferences_)
    : platform(platform_),
      makePreferences(std::move(makePreferences_)),
      monitor(std::make_shared<ShortcutMonitor>(platform)),
      hud(HUDController::shared()) {}

void AppDelegate::applicationDidFinishLaunching() {
    auto& settings = Settings::shared();
    applyMenuBarVisibility(settings.showInMenuBar());
    installActionCallback();
    monitor->start();
    if (!platform.accessibility->isProcessTrusted()) {
        platform.accessibility->promptForTrust();
    }
    // The store announces before it stores, and `enabledChanged` reads it again: hence a later turn.
    cancellables.push_back(settings.enabled.subscribe(onMainLoop(&AppDelegate::enabledChanged)));
    cancellables.push_back(
        settings.showInMenuBar.subscribe(onMainLoop(&AppDelegate::applyMenuBarVisibility)));
    openPreferences();
}

bool AppDelegate::applicationShouldHandleReopen(bool) {
    openPreferences();
    return true;
}

void AppDelegate::menuWillOpen(platform::Menu& menu) {
    menu.setState(enabledTag, Settings::shared().enabled());
}

void AppDelegate::toggleEnabled() {
    auto& settings = Settings::shared();
    settings.enabled = !settings.enabled();
    if (statusItem && statusMenu) {
        statusMenu->setState(enabledTag, settings.enabled());
    }
}

void AppDelegate::openPreferences() {
    if (!prefsWindow) {
        prefsWindow = makePreferences();
    }
    prefsWindow->present();
}

void AppDelegate::checkForUpdates() {
    SparkleUpdater::shared().checkForUpdates();
}

void AppDelegate::applyMenuBarVisibility(bool visible) {
    if (visible == (statusItem != nullptr)) {
        return;
    }
    if (visible) {
        statusItem = platform.statusBar->createItem();
        refreshStatusIcon();
        statusMenu = buildMenu();
        statusItem->setMenu(statusMenu);
    } else {
        statusItem.reset();
        statusMenu.reset();
    }
}

void AppDelegate::refreshStatusIcon() {
    if (!statusItem) {
        return;
    }
    // Outlined means at work, filled means switched off.
    const auto name = Settings::shared().enabled() ? u"keyboard"_s : u"keyboard.fill"_s;
    auto image = platform.statusBar->symbolImage(name, u"Orvantile"_s);
    if (image) {
        image->isTemplate = true;
    }
    statusItem->setImage(image);
}

std::shared_ptr<platform::Menu> AppDelegate::buildMenu() {
    using platform::MenuAction;
    using platform::MenuItem;

    const auto calling = [this](void (AppDelegate::*action)()) {
        return [delegate = weak_from_this(), action] {
            if (const auto self = delegate.lock()) {
                (self.get()->*action)();
            }
        };
    };
    const auto item = [&](const QString& title, void (AppDelegate::*action)(), const QString& command) {
        return MenuItem{
            .title = title, .action = MenuAction::call, .handler = calling(action), .command = command};
    };
    auto enabled = item(u"Enabled"_s, &AppDelegate::toggleEnabled, u"toggleEnabled"_s);
    enabled.on = Settings::shared().enabled();
    enabled.tag = enabledTag;

    auto menu = std::make_shared<platform::Menu>(std::vector<MenuItem>{
        enabled,
        MenuItem::separator(),
        item(u"Preferences…"_s, &AppDelegate::openPreferences, u"openPreferences"_s),
        item(u"Check for Updates…"_s, &AppDelegate::checkForUpdates, u"checkForUpdates"_s),
        MenuItem::separator(),
        MenuItem{.title = u"Quit Orvantile"_s, .action = MenuAction::terminate, .keyEquivalent = u"q"_s},
    });
    menu->willOpen = [delegate = weak_from_this()](platform::Menu& opening) {
        if (const auto self = delegate.lock()) {
            self->menuWillOpen(opening);
        }
    };
    return menu;
}

void AppDelegate::installActionCallback() {
    monitor->onAction = [delegate = weak_from_this()](const std::optional<QString>& shortcut,
                                                      const QString& title) {
        const auto label = composeLabel(shortcut, title);
        if (!label) {
            return;
        }
        if (const auto self = delegate.lock()) {
            self->hud->show(*label);
        }
    };
}

template <typename Value>
std::function<void(const Value&)> AppDelegate::onMainLoop(void (AppDelegate::*handler)(Value)) {
    return [delegate = weak_from_this(), handler, &scheduler = *platform.scheduler](const Value& value) {
        scheduler.runLater([delegate, handler, value] {
            if (const auto self = delegate.lock()) {
                (self.get()->*handler)(value);
            }
        });
    };
}

void AppDelegate::enabledChanged(bool) {
    refreshStatusIcon();
}

} // namespace orvantile
