#pragma once

#include "platform/linux/menus/ActionGroups.h"
#include "platform/linux/menus/CommandList.h"
#include "platform/linux/menus/ExportedMenu.h"
#include "platform/linux/menus/SessionMenuBus.h"

#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvantile::platform::menus {

/// The menu bars that GTK programs export (org.gtk.Menus) where the desktop may want to show them itself: of
/// the window with the focus, whether they are shown in it or not. Main thread only.
class GtkMenuModel final : public a11y::MenuModel {
public:
    /// `bus` must outlive it.
    explicit GtkMenuModel(SessionMenuBus& bus);
    GtkMenuModel(const GtkMenuModel&) = delete;
    GtkMenuModel& operator=(const GtkMenuModel&) = delete;
    ~GtkMenuModel() override;

    void follow(std::int32_t processIdentifier) override;
    void windowActivated(const session::ActiveWindow& window) override;

    void menuClosed() override {}

    [[nodiscard]] a11y::MenuAnswer commandFor(const session::ActiveWindow& window,
                                              const keys::Candidates& candidates) override;
    [[nodiscard]] a11y::MenuReach reach(std::int32_t processIdentifier) const override;

private:
    void join(const session::WindowObjects& objects);
    void leave();
    void askForGroups();
    void changed();
    void conclude();
    [[nodiscard]] bool isEnabled(const std::string& action) const;

    SessionMenuBus& bus;
    std::int32_t followed = -1;
    session::WindowObjects joined; ///< empty while no menu is followed
    ExportedMenu menu;
    ActionGroups actions;
    std::unique_ptr<ActionGroup> menuActions; ///< exported beside the menu itself
    a11y::SlotHandle changes;
    std::vector<ExportedMenu::Item> accelerated;
    std::size_t items = 0;
    QTimer settling;                 ///< menus that are being filled change many times in a row
    std::shared_ptr<const int> self; ///< of the answers about `joined`
};

} // namespace orvantile::platform::menus
