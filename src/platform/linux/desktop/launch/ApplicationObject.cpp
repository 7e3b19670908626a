#include "platform/linux/desktop/launch/ApplicationObject.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace orvantile::platform::desktop {

/// The methods as the bus calls them.
struct ApplicationMethods {
    static int launch(sd_bus_message* call, void* data) {
        static_cast<ApplicationObject*>(data)->launched(LaunchToken::read(call));
        return sd_bus_reply_method_return(call, "");
    }

    static int activate(sd_bus_message* call, void* data, sd_bus_error*) { return launch(call, data); }

    static int open(sd_bus_message* call, void* data, sd_bus_error*) {
        const int skipped = sd_bus_message_skip(call, "as");
        return skipped < 0 ? skipped : launch(call, data);
    }

    static int activateAction(sd_bus_message* call, void*, sd_bus_error* error) {
        const char* action = nullptr;
        if (const int result = sd_bus_message_read(call, "s", &action); result < 0) {
            return result;
        }
        return sd_bus_error_setf(error, SD_BUS_ERROR_INVALID_ARGS, "There is no action “%s”.", action);
    }

    static constexpr std::uint64_t everybody = SD_BUS_VTABLE_UNPRIVILEGED;
    static const sd_bus_vtable* table();
};

const sd_bus_vtable* ApplicationMethods::table() {
    static const auto entries = std::to_array<sd_bus_vtable>({
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("Activate", "a{sv}", "", activate, everybody),
        SD_BUS_METHOD("Open", "asa{sv}", "", open, everybody),
        SD_BUS_METHOD("ActivateAction", "sava{sv}", "", activateAction, everybody),
        SD_BUS_VTABLE_END,
    });
    return entries.data();
}

ApplicationObject::ApplicationObject(SessionBus& bus, const std::string& name, Handler launched_)
    : launched(std::move(launched_)) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus.handle(), &slot, pathOf(name).c_str(), interface,
                             ApplicationMethods::table(), this);
    object.reset(slot);
}

std::string ApplicationObject::pathOf(const std::string& name) {
    std::string path = "/" + name;
    std::ranges::replace(path, '.', '/');
    std::ranges::replace(path, '-', '_');
    return path;
}

} // namespace orvantile::platform::desktop
