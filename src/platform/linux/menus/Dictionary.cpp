#include "platform/linux/menus/Dictionary.h"

namespace orvantile::platform::menus {
namespace {

/// Whether the message stands before the last unread thing still, which `read` has left.
bool standsBeforeVariant(sd_bus_message& message) {
    char type = 0;
    const char* contents = nullptr;
    return sd_bus_message_peek_type(&message, &type, &contents) > 0 && type == SD_BUS_TYPE_VARIANT;
}

} // namespace

bool readDictionary(sd_bus_message& message,
                    const std::function<bool(std::string_view name, sd_bus_message&)>& read) {
    return readArray(
        message, "{sv}",
        [&](sd_bus_message& entry) {
            const char* name = nullptr;
            if (sd_bus_message_enter_container(&entry, SD_BUS_TYPE_DICT_ENTRY, "sv") <= 0 ||
                sd_bus_message_read_basic(&entry, SD_BUS_TYPE_STRING, &name) <= 0 || !read(name, entry)) {
                return false;
            }
            if (standsBeforeVariant(entry) && sd_bus_message_skip(&entry, "v") < 0) {
                return false;
            }
            return sd_bus_message_exit_container(&entry) >= 0;
        },
        mostProperties);
}

bool readArray(sd_bus_message& message, const char* contents,
               const std::function<bool(sd_bus_message&)>& read, std::size_t most) {
    if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_ARRAY, contents) <= 0) {
        return false;
    }
    while (sd_bus_message_at_end(&message, 0) == 0) {
        if (most-- == 0 || !read(message)) {
            return false;
        }
    }
    return sd_bus_message_exit_container(&message) >= 0;
}

bool holdsVariant(sd_bus_message& message, std::string_view contents) {
    char type = 0;
    const char* found = nullptr;
    return sd_bus_message_peek_type(&message, &type, &found) > 0 && type == SD_BUS_TYPE_VARIANT &&
           found != nullptr && contents == found;
}

} // namespace orvantile::platform::menus
