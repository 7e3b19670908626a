#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"
#include "platform/linux/desktop/statusitem/MenuDescription.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace orvantile::platform::desktop {

/// A menu that the bar shows with its own widgets (com.canonical.dbusmenu).
class MenuExport {
public:
    static constexpr auto path = "/MenuBar";

    /// Called when the user has chosen an item; it may not destroy this object.
    using Choice = std::function<void(const MenuItem&)>;

    /// `bus` outlives this object.
    MenuExport(SessionBus& bus, Choice choose);
    MenuExport(const MenuExport&) = delete;
    MenuExport& operator=(const MenuExport&) = delete;
    ~MenuExport() = default;

    void setMenu(std::shared_ptr<Menu> menu);

    /// Tells the bar what has changed in the menu.
    void update();

private:
    friend struct MenuExportMethods;

    /// Lets the menu get ready to open. True when that has changed it.
    bool aboutToShow();
    void event(int identifier, std::string_view name);
    [[nodiscard]] const MenuEntry* entry(int identifier) const;

    SessionBus& bus;
    Choice choose;
    std::shared_ptr<Menu> menu;
    std::vector<MenuEntry> entries;
    std::uint32_t revision = 1;
    bool announced = false; ///< the bar has asked before opening and not yet said that it has opened
    SlotHandle object;
};

} // namespace orvantile::platform::desktop
