#include "platform/linux/menus/LinuxMenus.h"

#include "platform/linux/menus/DBusMenuModel.h"
#include "platform/linux/menus/GtkMenuModel.h"
#include "platform/linux/menus/MenuSources.h"
#include "platform/linux/menus/ProgramShortcuts.h"
#include "platform/linux/menus/ShortcutsWindowModel.h"

#include <utility>
#include <vector>

namespace orvantile::platform::menus {

LinuxMenus::LinuxMenus(const std::function<void()>& drainFirst) : sessionBus(drainFirst) {
    auto first = a11y::makeBusMenuModel(drainFirst);
    accessibility = first.get();
    std::vector<std::unique_ptr<a11y::MenuModel>> all;
    all.push_back(std::move(first));
    all.push_back(std::make_unique<DBusMenuModel>(sessionBus));
    all.push_back(std::make_unique<GtkMenuModel>(sessionBus));
    all.push_back(std::make_unique<ShortcutsWindowModel>(sessionBus, shortcutsOfProcess));
    sources = std::make_unique<MenuSources>(std::move(all));
}

LinuxMenus::~LinuxMenus() = default;

a11y::MenuModel& LinuxMenus::model() const {
    return *sources;
}

a11y::AccessibilityBus& LinuxMenus::accessibilityBus() const {
    return accessibility->accessibilityBus();
}

} // namespace orvantile::platform::menus
