#pragma once

#include "platform/Appearance.h"
#include "platform/Scheduler.h"
#include "platform/StatusBar.h"
#include "platform/linux/desktop/bus/SessionBus.h"
#include "platform/linux/desktop/statusitem/MenuExport.h"
#include "platform/linux/desktop/statusitem/NotifierItem.h"
#include "platform/linux/desktop/statusitem/NotifierWatcher.h"
#include "platform/linux/desktop/statusitem/PopupMenu.h"
#include "platform/linux/desktop/statusitem/TrayIcon.h"

#include <memory>
#include <optional>
#include <string>

namespace orvantile::platform::desktop {

/// An item that lives in a bar which collects items on the session bus or, while there is none, in a classic
/// system tray. Bars may come and go.
class LinuxStatusItem final : public StatusItem {
public:
    /// `name` is the item's name on the bus. The platform's peers outlive the item.
    LinuxStatusItem(Scheduler& scheduler, Appearance& appearance, const std::string& name);
    LinuxStatusItem(const LinuxStatusItem&) = delete;
    LinuxStatusItem& operator=(const LinuxStatusItem&) = delete;
    ~LinuxStatusItem() override;

    void setImage(const std::optional<SymbolImage>& image) override;
    void setMenu(std::shared_ptr<Menu> menu) override;

private:
    void connectBus(const std::string& name);
    void placeItem();
    void showImage();
    void showMenu(QPoint place);
    void choose(const MenuItem& item);
    [[nodiscard]] QColor inkOfTheme() const;

    Scheduler& scheduler;
    Appearance& appearance;
    std::optional<SymbolImage> image;
    std::shared_ptr<Menu> menu;
    std::unique_ptr<PopupMenu> popup; ///< while it is open
    std::unique_ptr<SessionBus> bus;
    std::unique_ptr<MenuExport> exportedMenu;
    std::unique_ptr<NotifierItem> notifierItem;
    std::unique_ptr<NotifierWatcher> watcher;
    std::unique_ptr<TrayIcon> trayIcon;
    Appearance::Token appearanceChanges;
};

} // namespace orvantile::platform::desktop
