#include "platform/linux/desktop/DesktopAppearance.h"

#include "platform/linux/desktop/IniDefaults.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <utility>

namespace orvantile::platform::desktop {

namespace {

/// Sees what the application object is told.
class PaletteWatcher final : public QObject {
public:
    explicit PaletteWatcher(std::function<void()> onChanged_) : onChanged(std::move(onChanged_)) {
        qGuiApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp) {
            onChanged();
        }
        return false;
    }

private:
    std::function<void()> onChanged;
};

} // namespace

DesktopAppearance::Sources DesktopAppearance::Sources::ofSession() {
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    return {.sessionBus = SettingsPortal::sessionBusAddress(),
            .configuration = IniDefaults::configurationFolder(),
            .kde = desktops.contains(QStringLiteral("KDE"))};
}

DesktopAppearance::DesktopAppearance(const Sources& sources, LiveTheme* theme_)
    : kde(sources.kde),
      theme(theme_),
      portal(sources.sessionBus),
      files(sources.configuration, sources.kde),
      dark(look()) {
    portal.onChanged = [this] { update(); };
    files.onChanged = [this] { update(); };
    palette = std::make_unique<PaletteWatcher>([this] { update(); });
    if (theme != nullptr) {
        theme->onChanged = [this] { update(); };
    }
}

DesktopAppearance::~DesktopAppearance() {
    if (theme != nullptr) {
        theme->onChanged = nullptr;
    }
}

bool DesktopAppearance::look() const {
    if (const auto says = portal.isDark()) {
        return *says;
    }
    const auto announced = theme != nullptr ? theme->isDark() : std::nullopt;
    if (announced && !kde) { // KDE announces but the theme of GTK programs
        return *announced;
    }
    if (const auto says = files.isDark()) {
        return *says;
    }
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

void DesktopAppearance::update() {
    if (std::exchange(dark, look()) == dark) {
        return;
    }
    std::erase_if(handlers, [](const auto& handler) { return handler.expired(); });
    const auto present = handlers;
    for (const auto& handler : present) {
        if (const auto listening = handler.lock()) {
            (*listening)();
        }
    }
}

Appearance::Token DesktopAppearance::observeChanges(std::function<void()> handler) {
    auto token = std::make_shared<const Handler>(std::move(handler));
    handlers.push_back(token);
    return token;
}

} // namespace orvantile::platform::desktop
