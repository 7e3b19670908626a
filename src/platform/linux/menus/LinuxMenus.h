#pragma once

#include "platform/linux/a11y/BusMenuModel.h"
#include "platform/linux/menus/SessionMenuBus.h"

#include <functional>
#include <memory>

namespace orvantile::platform::menus {

class MenuSources;

/// All sources of menus of this desktop, in the order of their exactness: what programs tell assistive
/// technology, what they export for a menu bar of the desktop's, what they list in their shortcuts window.
/// Main thread only.
class LinuxMenus {
public:
    /// `drainFirst` is called before each message of a bus is handled.
    explicit LinuxMenus(const std::function<void()>& drainFirst);
    LinuxMenus(const LinuxMenus&) = delete;
    LinuxMenus& operator=(const LinuxMenus&) = delete;
    ~LinuxMenus();

    [[nodiscard]] a11y::MenuModel& model() const;

    /// The desktop's switch that makes applications join the accessibility bus, and the bus itself.
    [[nodiscard]] a11y::AccessibilityBus& accessibilityBus() const;

private:
    SessionMenuBus sessionBus;
    a11y::BusMenuModel* accessibility; ///< owned by the sources
    std::unique_ptr<MenuSources> sources;
};

} // namespace orvantile::platform::menus
