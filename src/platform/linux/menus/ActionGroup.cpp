#include "platform/linux/menus/ActionGroup.h"

#include "platform/linux/a11y/ReplyDecoder.h"
#include "platform/linux/menus/Dictionary.h"

namespace orvantile::platform::menus {
namespace {

constexpr auto actionsInterface = "org.gtk.Actions";

} // namespace

ActionGroup::ActionGroup(a11y::BusConnection& bus, const std::string& name, const std::string& path) {
    changes = bus.subscribe("type='signal',sender='" + name + "',path='" + path +
                                "',interface='org.gtk.Actions',member='Changed'",
                            [this](sd_bus_message& message) { changed(message); });
    auto question = bus.method(name, path, actionsInterface, "DescribeAll");
    if (question) {
        bus.call(std::move(question), self, [this](sd_bus_message& answer) { described(answer); });
    }
}

bool ActionGroup::isEnabled(const std::string& action) const {
    const auto found = actions.find(action);
    return found != actions.end() && found->second;
}

void ActionGroup::described(sd_bus_message& answer) {
    if (a11y::isAnswer(answer)) {
        static_cast<void>(readDescriptions(answer));
    }
}

/// a{s(bgav)}
bool ActionGroup::readDescriptions(sd_bus_message& message) {
    return readArray(message, "{s(bgav)}", [this](sd_bus_message& entry) {
        int enabled = 0;
        if (sd_bus_message_enter_container(&entry, SD_BUS_TYPE_DICT_ENTRY, "s(bgav)") <= 0) {
            return false;
        }
        const auto name = a11y::readBytes(entry);
        if (!name || sd_bus_message_enter_container(&entry, SD_BUS_TYPE_STRUCT, "bgav") <= 0 ||
            sd_bus_message_read_basic(&entry, SD_BUS_TYPE_BOOLEAN, &enabled) <= 0 ||
            sd_bus_message_skip(&entry, "gav") < 0 || sd_bus_message_exit_container(&entry) < 0) {
            return false;
        }
        if (actions.size() < mostElements || actions.contains(*name)) {
            actions[*name] = enabled != 0;
        }
        return sd_bus_message_exit_container(&entry) >= 0;
    });
}

/// Removed names, enabled flags, states, added descriptions: as, a{sb}, a{sv}, a{s(bgav)}.
void ActionGroup::changed(sd_bus_message& message) {
    static_cast<void>(
        readArray(message, "s",
                  [this](sd_bus_message& part) {
                      const auto name = a11y::readBytes(part);
                      actions.erase(name.value_or(std::string()));
                      return name.has_value();
                  }) &&
        readArray(message, "{sb}",
                  [this](sd_bus_message& entry) {
                      int enabled = 0;
                      if (sd_bus_message_enter_container(&entry, SD_BUS_TYPE_DICT_ENTRY, "sb") <= 0) {
                          return false;
                      }
                      const auto name = a11y::readBytes(entry);
                      if (!name || sd_bus_message_read_basic(&entry, SD_BUS_TYPE_BOOLEAN, &enabled) <= 0) {
                          return false;
                      }
                      if (const auto action = actions.find(*name); action != actions.end()) {
                          action->second = enabled != 0;
                      }
                      return sd_bus_message_exit_container(&entry) >= 0;
                  }) &&
        sd_bus_message_skip(&message, "a{sv}") >= 0 && readDescriptions(message));
}

} // namespace orvantile::platform::menus
