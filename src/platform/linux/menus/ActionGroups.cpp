#include "platform/linux/menus/ActionGroups.h"

namespace orvantile::platform::menus {
namespace {

constexpr std::string_view ofApplication = "app.";
constexpr std::string_view ofWindow = "win.";

bool isEnabledIn(const ActionGroup* group, std::string_view action) {
    return group != nullptr && group->isEnabled(std::string(action));
}

} // namespace

ActionGroups::ActionGroups(a11y::BusConnection& bus, const session::WindowObjects& objects)
    : application(actionsAt(bus, objects.gtkBusName, objects.gtkApplication)),
      window(actionsAt(bus, objects.gtkBusName, objects.gtkWindow)) {}

std::optional<bool> ActionGroups::isEnabled(std::string_view action) const {
    if (action.starts_with(ofApplication)) {
        return isEnabledIn(application.get(), action.substr(ofApplication.size()));
    }
    if (action.starts_with(ofWindow)) {
        return isEnabledIn(window.get(), action.substr(ofWindow.size()));
    }
    return std::nullopt;
}

std::unique_ptr<ActionGroup> actionsAt(a11y::BusConnection& bus, const std::string& name,
                                       const std::string& path) {
    const bool exist =
        sd_bus_service_name_is_valid(name.c_str()) > 0 && sd_bus_object_path_is_valid(path.c_str()) > 0;
    return exist ? std::make_unique<ActionGroup>(bus, name, path) : nullptr;
}

} // namespace orvantile::platform::menus
