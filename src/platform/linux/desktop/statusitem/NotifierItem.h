#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"

#include <QImage>
#include <QPoint>
#include <QString>
#include <functional>
#include <string>
#include <vector>

namespace orvantile::platform::desktop {

/// What the item shows.
struct NotifierIcon {
    QString name;               ///< in the icon theme; empty when the theme does not have it
    std::vector<QImage> images; ///< square, in several sizes, for bars that cannot use the name
    QString description;

    friend bool operator==(const NotifierIcon&, const NotifierIcon&) = default;
};

/// The item as an object on the bus (org.kde.StatusNotifierItem). The bar shows its menu by itself.
class NotifierItem {
public:
    /// For bars that leave the menu to the item: shows it at a place on the screen, in pixels.
    using ShowMenu = std::function<void(QPoint)>;

    /// `bus` outlives this object and belongs to this item alone.
    NotifierItem(SessionBus& bus, std::string menuPath, ShowMenu showMenu);
    NotifierItem(const NotifierItem&) = delete;
    NotifierItem& operator=(const NotifierItem&) = delete;
    ~NotifierItem() = default;

    void setIcon(const NotifierIcon& icon);

private:
    friend struct NotifierItemMethods;

    SessionBus& bus;
    std::string menuPath;
    ShowMenu showMenu;
    NotifierIcon icon;
    SlotHandle object;
};

} // namespace orvantile::platform::desktop
