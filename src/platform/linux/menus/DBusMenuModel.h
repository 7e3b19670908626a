#pragma once

#include "platform/linux/menus/MenuLayout.h"
#include "platform/linux/menus/SessionMenuBus.h"

#include <QTimer>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvantile::platform::menus {

/// The menus that programs export to a desktop with one menu bar for all windows (com.canonical.dbusmenu):
/// as their window says, or as the desktop's registrar knows. The registrar is only asked, never started or
/// replaced: programs hide their own menu bar as soon as there is one. Main thread only.
class DBusMenuModel final : public a11y::MenuModel {
public:
    /// `bus` must outlive it.
    explicit DBusMenuModel(SessionMenuBus& bus);

    void follow(std::int32_t processIdentifier) override;
    void windowActivated(const session::ActiveWindow& window) override;

    void menuClosed() override {}

    [[nodiscard]] a11y::MenuAnswer commandFor(const session::ActiveWindow& window,
                                              const keys::Candidates& candidates) override;
    [[nodiscard]] a11y::MenuReach reach(std::int32_t processIdentifier) const override;

private:
    /// Service and object path.
    using Place = std::pair<std::string, std::string>;

    struct Menu {
        std::optional<MenuLayout> layout;
        Commands commands;
        std::vector<a11y::SlotHandle> subscriptions; ///< none while another window has the focus
        bool reading = false;
        bool outdated = false; ///< changed since the reading began
    };

    void askRegistrar(const session::ActiveWindow& window);
    void watchRegistrar(a11y::BusConnection& bus);
    void found(std::uint64_t window, Place place);
    void leave();
    void read(const Place& place);
    void forgetAll();

    SessionMenuBus& bus;
    std::int32_t followed = -1;
    std::uint64_t activeWindow = 0;
    std::map<std::uint64_t, Place> placeOfWindow;
    std::map<Place, Menu> menus;
    std::optional<Place> active;
    a11y::SlotHandle registrations;
    QTimer settling; ///< menus that are being filled change many times in a row
    std::shared_ptr<const int> self = std::make_shared<int>();
};

} // namespace orvantile::platform::menus
