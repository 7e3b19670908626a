#include "platform/linux/desktop/statusitem/LinuxStatusItem.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QStandardPaths>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

/// The sizes that bars use, with those of screens of twice the resolution.
constexpr std::array imageSizes{16, 22, 24, 32, 44, 48, 64};

bool isInstalled(const QString& iconName) {
    return !QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                   u"icons/hicolor/symbolic/apps/" % iconName % u".svg"_s)
                .isEmpty();
}

} // namespace

LinuxStatusItem::LinuxStatusItem(Scheduler& scheduler_, Appearance& appearance_, const std::string& name)
    : scheduler(scheduler_),
      appearance(appearance_) {
    if (QGuiApplication::platformName() == u"xcb"_s) {
        if (auto connection = TrayConnection::open()) {
            trayIcon = std::make_unique<TrayIcon>(
                std::move(connection), [this](QPoint place) { showMenu(place); },
                [this] { return inkOfTheme(); });
        }
    }
    connectBus(name);
    placeItem();
    appearanceChanges = appearance.observeChanges([this] { showImage(); });
}

LinuxStatusItem::~LinuxStatusItem() {
    if (menu) {
        menu->onChange = nullptr;
    }
}

void LinuxStatusItem::setImage(const std::optional<SymbolImage>& image_) {
    image = image_;
    showImage();
}

void LinuxStatusItem::setMenu(std::shared_ptr<Menu> menu_) {
    popup.reset();
    if (menu) {
        menu->onChange = nullptr;
    }
    menu = std::move(menu_);
    if (menu) {
        menu->onChange = [this] {
            if (exportedMenu) {
                exportedMenu->update();
            }
            if (popup) {
                popup->update();
            }
        };
    }
    if (exportedMenu) {
        exportedMenu->setMenu(menu);
    }
}

void LinuxStatusItem::connectBus(const std::string& name) {
    bus = SessionBus::open();
    if (!bus) {
        return;
    }
    exportedMenu = std::make_unique<MenuExport>(*bus, [this](const MenuItem& item) { choose(item); });
    notifierItem =
        std::make_unique<NotifierItem>(*bus, MenuExport::path, [this](QPoint place) { showMenu(place); });
    sd_bus_request_name_async(bus->handle(), nullptr, name.c_str(), 0, nullptr, nullptr);
    watcher = std::make_unique<NotifierWatcher>(*bus, name);
    watcher->onChange = [this] { placeItem(); };
    bus->onClosed = [this] {
        watcher.reset();
        notifierItem.reset();
        exportedMenu.reset();
        bus.reset();
        placeItem();
    };
    bus->attach();
}

void LinuxStatusItem::placeItem() {
    using State = NotifierWatcher::State;
    if (trayIcon) {
        trayIcon->setWanted((watcher ? watcher->state() : State::hidden) == State::hidden);
    }
}

void LinuxStatusItem::showImage() {
    const auto symbol = image ? KeyboardSymbol::named(image->name) : std::nullopt;
    if (notifierItem) {
        NotifierIcon icon;
        icon.description = image ? image->accessibilityDescription : QString();
        if (symbol) {
            icon.name = isInstalled(symbol->iconName) ? symbol->iconName : QString();
            for (const int size : imageSizes) {
                icon.images.push_back(symbol->draw(size, inkOfTheme()));
            }
        }
        notifierItem->setIcon(icon);
    }
    if (trayIcon) {
        trayIcon->setSymbol(symbol, image ? image->accessibilityDescription : QString());
    }
}

void LinuxStatusItem::showMenu(QPoint place) {
    if (!menu) {
        return;
    }
    popup = std::make_unique<PopupMenu>(menu, [this](const MenuItem& item) { choose(item); });
    QObject::connect(popup.get(), &QMenu::aboutToHide, popup.get(), [this] {
        // The choice is told after this.
        popup.release()->deleteLater();
    });
    popup->openAt(place);
}

void LinuxStatusItem::choose(const MenuItem& item) {
    // What is chosen may remove this item, or take its time.
    if (item.action == MenuAction::terminate) {
        scheduler.runLater([] { QCoreApplication::exit(0); });
    } else if (item.handler) {
        scheduler.runLater(item.handler);
    }
}

QColor LinuxStatusItem::inkOfTheme() const {
    return inkOn(appearance.isDark() ? Qt::black : Qt::white);
}

} // namespace orvantile::platform::desktop
