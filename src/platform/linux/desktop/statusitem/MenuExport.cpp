#include "platform/linux/desktop/statusitem/MenuExport.h"

#include "platform/linux/desktop/statusitem/MenuMessages.h"

#include <array>
#include <string_view>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

constexpr auto menuInterface = "com.canonical.dbusmenu";
constexpr int root = 0;

} // namespace

/// The methods as the bus calls them.
struct MenuExportMethods {
    static MenuExport& self(void* data) { return *static_cast<MenuExport*>(data); }

    static int getLayout(sd_bus_message* call, void* data, sd_bus_error*) {
        const auto& menu = self(data);
        int parent = 0;
        int depth = 0;
        if (const int result = sd_bus_message_read(call, "ii", &parent, &depth); result < 0) {
            return result;
        }
        const auto wanted = readNames(*call);
        const auto reply = replyTo(*call);
        sd_bus_message_append(reply.get(), "u", menu.revision);
        if (parent == root) {
            appendRoot(*reply, depth == 0 ? std::vector<MenuEntry>{} : menu.entries, wanted);
        } else if (const auto* entry = menu.entry(parent)) {
            appendItem(*reply, *entry, wanted);
        } else {
            return -ENOENT;
        }
        return sd_bus_message_send(reply.get());
    }

    static int getGroupProperties(sd_bus_message* call, void* data, sd_bus_error*) {
        const auto& menu = self(data);
        const auto identifiers = readIdentifiers(*call);
        const auto wanted = readNames(*call);
        const auto reply = replyTo(*call);
        std::vector<MenuEntry> described;
        for (const auto& entry : menu.entries) {
            if (identifiers.empty() || identifiers.contains(entry.identifier)) {
                described.push_back(entry);
            }
        }
        appendProperties(*reply, described, wanted);
        return sd_bus_message_send(reply.get());
    }

    static int getProperty(sd_bus_message* call, void* data, sd_bus_error*) {
        int identifier = 0;
        const char* name = nullptr;
        if (const int result = sd_bus_message_read(call, "is", &identifier, &name); result < 0) {
            return result;
        }
        const auto* entry = self(data).entry(identifier);
        if (entry == nullptr || !entry->properties.contains(name)) {
            return -ENOENT;
        }
        const auto reply = replyTo(*call);
        appendValue(*reply, entry->properties.at(name));
        return sd_bus_message_send(reply.get());
    }

    static int event(sd_bus_message* call, void* data, sd_bus_error*) {
        int identifier = 0;
        const char* name = nullptr;
        if (const int result = sd_bus_message_read(call, "is", &identifier, &name); result < 0) {
            return result;
        }
        self(data).event(identifier, name);
        return sd_bus_reply_method_return(call, "");
    }

    static int eventGroup(sd_bus_message* call, void* data, sd_bus_error*) {
        int result = sd_bus_message_enter_container(call, SD_BUS_TYPE_ARRAY, "(isvu)");
        while (result > 0 &&
               (result = sd_bus_message_enter_container(call, SD_BUS_TYPE_STRUCT, "isvu")) > 0) {
            int identifier = 0;
            const char* name = nullptr;
            result = sd_bus_message_read(call, "is", &identifier, &name);
            if (result > 0) {
                self(data).event(identifier, name);
                sd_bus_message_skip(call, "vu");
                result = sd_bus_message_exit_container(call);
            }
        }
        return result < 0 ? result : sd_bus_reply_method_return(call, "ai", 0);
    }

    static int aboutToShow(sd_bus_message* call, void* data, sd_bus_error*) {
        int identifier = 0;
        if (const int result = sd_bus_message_read(call, "i", &identifier); result < 0) {
            return result;
        }
        const bool changed = identifier == root && self(data).aboutToShow();
        return sd_bus_reply_method_return(call, "b", static_cast<int>(changed));
    }

    static int aboutToShowGroup(sd_bus_message* call, void* data, sd_bus_error*) {
        const bool changed = readIdentifiers(*call).contains(root) && self(data).aboutToShow();
        return changed ? sd_bus_reply_method_return(call, "aiai", 1, root, 0)
                       : sd_bus_reply_method_return(call, "aiai", 0, 0);
    }

    static int version(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                       sd_bus_error*) {
        return sd_bus_message_append(reply, "u", 3U);
    }

    static int textDirection(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                             sd_bus_error*) {
        return sd_bus_message_append(reply, "s", "ltr");
    }

    static int status(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                      sd_bus_error*) {
        return sd_bus_message_append(reply, "s", "normal");
    }

    static int iconThemePath(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                             sd_bus_error*) {
        return sd_bus_message_append(reply, "as", 0);
    }

    static constexpr std::uint64_t open = SD_BUS_VTABLE_UNPRIVILEGED;
    static const sd_bus_vtable* table();
};

const sd_bus_vtable* MenuExportMethods::table() {
    static const auto entries = std::to_array<sd_bus_vtable>({
        SD_BUS_VTABLE_START(0),
        SD_BUS_PROPERTY("Version", "u", version, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("TextDirection", "s", textDirection, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("Status", "s", status, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_PROPERTY("IconThemePath", "as", iconThemePath, 0, SD_BUS_VTABLE_PROPERTY_CONST),
        SD_BUS_METHOD("GetLayout", "iias", "u(ia{sv}av)", getLayout, open),
        SD_BUS_METHOD("GetGroupProperties", "aias", "a(ia{sv})", getGroupProperties, open),
        SD_BUS_METHOD("GetProperty", "is", "v", getProperty, open),
        SD_BUS_METHOD("Event", "isvu", "", event, open),
        SD_BUS_METHOD("EventGroup", "a(isvu)", "ai", eventGroup, open),
        SD_BUS_METHOD("AboutToShow", "i", "b", aboutToShow, open),
        SD_BUS_METHOD("AboutToShowGroup", "ai", "aiai", aboutToShowGroup, open),
        SD_BUS_SIGNAL("ItemsPropertiesUpdated", "a(ia{sv})a(ias)", 0),
        SD_BUS_SIGNAL("LayoutUpdated", "ui", 0),
        SD_BUS_SIGNAL("ItemActivationRequested", "iu", 0),
        SD_BUS_VTABLE_END,
    });
    return entries.data();
}

MenuExport::MenuExport(SessionBus& bus_, Choice choose_) : bus(bus_), choose(std::move(choose_)) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_object_vtable(bus.handle(), &slot, path, menuInterface, MenuExportMethods::table(), this);
    object.reset(slot);
}

void MenuExport::setMenu(std::shared_ptr<Menu> menu_) {
    menu = std::move(menu_);
    entries = menu ? describe(*menu) : std::vector<MenuEntry>{};
    ++revision;
    sd_bus_message* signal = nullptr;
    sd_bus_message_new_signal(bus.handle(), &signal, path, menuInterface, "LayoutUpdated");
    MessageHandle message(signal);
    sd_bus_message_append(signal, "ui", revision, root);
    bus.send(std::move(message));
}

void MenuExport::update() {
    if (!menu) {
        return;
    }
    auto described = describe(*menu);
    const auto changed = changes(entries, described);
    entries = std::move(described);
    if (changed.empty()) {
        return;
    }
    sd_bus_message* signal = nullptr;
    sd_bus_message_new_signal(bus.handle(), &signal, path, menuInterface, "ItemsPropertiesUpdated");
    MessageHandle message(signal);
    appendProperties(*signal, changed, {});
    sd_bus_message_append(signal, "a(ias)", 0);
    bus.send(std::move(message));
}

bool MenuExport::aboutToShow() {
    announced = true;
    if (!menu || !menu->willOpen) {
        return false;
    }
    const auto before = entries;
    menu->willOpen(*menu);
    update();
    return entries != before;
}

void MenuExport::event(int identifier, std::string_view name) {
    if (identifier == root && name == "opened" && !std::exchange(announced, false)) {
        // Some bars do not ask before.
        aboutToShow();
        announced = false;
    }
    if (name == "clicked" && entry(identifier) != nullptr) {
        choose(menu->items()[static_cast<std::size_t>(identifier - 1)]);
    }
}

const MenuEntry* MenuExport::entry(int identifier) const {
    const auto index = static_cast<std::size_t>(identifier - 1);
    return identifier > 0 && index < entries.size() ? &entries[index] : nullptr;
}

} // namespace orvantile::platform::desktop
