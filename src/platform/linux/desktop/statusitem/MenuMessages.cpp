#include "platform/linux/desktop/statusitem/MenuMessages.h"

#include <variant>

namespace orvantile::platform::desktop {
namespace {

/// Appends a value of each type as a variant.
struct VariantWriter {
    sd_bus_message& message;

    void operator()(const std::string& text) const {
        sd_bus_message_append(&message, "v", "s", text.c_str());
    }

    void operator()(int number) const { sd_bus_message_append(&message, "v", "i", number); }

    /// An array of shortcuts, each an array of keys.
    void operator()(const MenuShortcut& shortcut) const {
        sd_bus_message_open_container(&message, SD_BUS_TYPE_VARIANT, "aas");
        sd_bus_message_open_container(&message, SD_BUS_TYPE_ARRAY, "as");
        sd_bus_message_open_container(&message, SD_BUS_TYPE_ARRAY, "s");
        for (const auto& key : shortcut.keys) {
            sd_bus_message_append(&message, "s", key.c_str());
        }
        sd_bus_message_close_container(&message);
        sd_bus_message_close_container(&message);
        sd_bus_message_close_container(&message);
    }
};

void appendDictionary(sd_bus_message& message, const MenuProperties& properties,
                      const MenuPropertyNames& wanted) {
    sd_bus_message_open_container(&message, SD_BUS_TYPE_ARRAY, "{sv}");
    for (const auto& [name, value] : properties) {
        if (wanted.empty() || wanted.contains(name)) {
            sd_bus_message_open_container(&message, SD_BUS_TYPE_DICT_ENTRY, "sv");
            sd_bus_message_append(&message, "s", name.c_str());
            appendValue(message, value);
            sd_bus_message_close_container(&message);
        }
    }
    sd_bus_message_close_container(&message);
}

} // namespace

std::set<int> readIdentifiers(sd_bus_message& call) {
    std::set<int> identifiers;
    if (sd_bus_message_enter_container(&call, SD_BUS_TYPE_ARRAY, "i") > 0) {
        int identifier = 0;
        while (sd_bus_message_read(&call, "i", &identifier) > 0) {
            identifiers.insert(identifier);
        }
        sd_bus_message_exit_container(&call);
    }
    return identifiers;
}

MenuPropertyNames readNames(sd_bus_message& call) {
    MenuPropertyNames names;
    if (sd_bus_message_enter_container(&call, SD_BUS_TYPE_ARRAY, "s") > 0) {
        const char* name = nullptr;
        while (sd_bus_message_read(&call, "s", &name) > 0) {
            names.insert(name);
        }
        sd_bus_message_exit_container(&call);
    }
    return names;
}

MessageHandle replyTo(sd_bus_message& call) {
    sd_bus_message* reply = nullptr;
    sd_bus_message_new_method_return(&call, &reply);
    return MessageHandle(reply);
}

void appendValue(sd_bus_message& message, const MenuProperty& value) {
    std::visit(VariantWriter{message}, value);
}

void appendProperties(sd_bus_message& message, const std::vector<MenuEntry>& entries,
                      const MenuPropertyNames& wanted) {
    sd_bus_message_open_container(&message, SD_BUS_TYPE_ARRAY, "(ia{sv})");
    for (const auto& entry : entries) {
        sd_bus_message_open_container(&message, SD_BUS_TYPE_STRUCT, "ia{sv}");
        sd_bus_message_append(&message, "i", entry.identifier);
        appendDictionary(message, entry.properties, wanted);
        sd_bus_message_close_container(&message);
    }
    sd_bus_message_close_container(&message);
}

void appendItem(sd_bus_message& message, const MenuEntry& entry, const MenuPropertyNames& wanted) {
    sd_bus_message_open_container(&message, SD_BUS_TYPE_STRUCT, "ia{sv}av");
    sd_bus_message_append(&message, "i", entry.identifier);
    appendDictionary(message, entry.properties, wanted);
    sd_bus_message_append(&message, "av", 0);
    sd_bus_message_close_container(&message);
}

void appendRoot(sd_bus_message& message, const std::vector<MenuEntry>& entries,
                const MenuPropertyNames& wanted) {
    sd_bus_message_open_container(&message, SD_BUS_TYPE_STRUCT, "ia{sv}av");
    sd_bus_message_append(&message, "i", 0);
    appendDictionary(message, {{"children-display", "submenu"}}, wanted);
    sd_bus_message_open_container(&message, SD_BUS_TYPE_ARRAY, "v");
    for (const auto& entry : entries) {
        sd_bus_message_open_container(&message, SD_BUS_TYPE_VARIANT, "(ia{sv}av)");
        appendItem(message, entry, wanted);
        sd_bus_message_close_container(&message);
    }
    sd_bus_message_close_container(&message);
    sd_bus_message_close_container(&message);
}

} // namespace orvantile::platform::desktop
