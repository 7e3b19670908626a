#include "desktop/statusitem/ScriptedBar.h"

#include <stdexcept>

namespace orvantile::test {
namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr auto menuPath = "/MenuBar";
constexpr auto menuInterface = "com.canonical.dbusmenu";

struct FreeMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

using Message = std::unique_ptr<sd_bus_message, FreeMessage>;

/// A property of a menu's entry; null when it has none.
Message entryProperty(sd_bus* bus, const QString& item, int entry, const char* property) {
    sd_bus_message* reply = nullptr;
    const int result = sd_bus_call_method(bus, item.toUtf8().constData(), menuPath, menuInterface,
                                          "GetProperty", nullptr, &reply, "is", entry, property);
    Message owned(reply);
    return result < 0 ? nullptr : std::move(owned);
}

} // namespace

/// The bar's object as the bus calls it.
struct ScriptedBarMethods {
    static ScriptedBar& self(void* data) { return *static_cast<ScriptedBar*>(data); }

    static int registerItem(sd_bus_message* call, void* data, sd_bus_error*) {
        auto& bar = self(data);
        const char* item = nullptr;
        if (const int result = sd_bus_message_read(call, "s", &item); result < 0) {
            return result;
        }
        ++bar.tried;
        if (bar.refusals > 0) {
            --bar.refusals;
            return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_FAILED, "not ready");
        }
        bar.registered.append(QString::fromUtf8(item));
        return sd_bus_reply_method_return(call, "");
    }

    static int registerHost(sd_bus_message* call, void*, sd_bus_error*) {
        return sd_bus_reply_method_return(call, "");
    }

    static int hostRegistered(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply,
                              void* data, sd_bus_error*) {
        ++self(data).asked;
        return sd_bus_message_append(reply, "b", self(data).hasHost);
    }

    static int protocol(sd_bus*, const char*, const char*, const char*, sd_bus_message* reply, void*,
                        sd_bus_error*) {
        return sd_bus_message_append(reply, "i", 0);
    }

    static int nameChanged(sd_bus_message* signal, void* data, sd_bus_error*) {
        const char* name = nullptr;
        const char* former = nullptr;
        const char* current = nullptr;
        if (sd_bus_message_read(signal, "sss", &name, &former, &current) > 0 && current[0] == '\0') {
            self(data).forget(QString::fromUtf8(name));
        }
        return 0;
    }

    static const sd_bus_vtable table[];
};

const sd_bus_vtable ScriptedBarMethods::table[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("RegisterStatusNotifierItem", "s", "", registerItem, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("RegisterStatusNotifierHost", "s", "", registerHost, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_PROPERTY("IsStatusNotifierHostRegistered", "b", hostRegistered, 0, 0),
    SD_BUS_PROPERTY("ProtocolVersion", "i", protocol, 0, 0),
    SD_BUS_SIGNAL("StatusNotifierHostRegistered", "", 0),
    SD_BUS_SIGNAL("StatusNotifierHostUnregistered", "", 0),
    SD_BUS_VTABLE_END,
};

ScriptedBar::ScriptedBar(const QString& busAddress) {
    sd_bus* opened = nullptr;
    sd_bus_new(&opened);
    bus.reset(opened);
    if (sd_bus_set_address(opened, busAddress.toLatin1().constData()) < 0 ||
        sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_start(opened) < 0 ||
        sd_bus_add_object_vtable(opened, nullptr, watcherPath, watcherName, ScriptedBarMethods::table, this) <
            0 ||
        sd_bus_match_signal(opened, nullptr, "org.freedesktop.DBus", nullptr, "org.freedesktop.DBus",
                            "NameOwnerChanged", ScriptedBarMethods::nameChanged, this) < 0) {
        throw std::runtime_error("no bus for the bar at " + busAddress.toStdString());
    }
}

void ScriptedBar::appear() {
    if (sd_bus_request_name(bus.get(), watcherName, 0) < 0) {
        throw std::runtime_error("another bar has the name");
    }
}

void ScriptedBar::disappear() {
    sd_bus_release_name(bus.get(), watcherName);
    registered.clear();
}

void ScriptedBar::setHost(bool present) {
    hasHost = static_cast<int>(present);
    announce(present ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered");
}

void ScriptedBar::announce(const char* signal) const {
    sd_bus_emit_signal(bus.get(), watcherPath, watcherName, signal, "");
}

void ScriptedBar::forget(const QString& item) {
    registered.removeAll(item);
}

bool ScriptedBar::await(const std::function<bool()>& condition, const QDeadlineTimer& deadline) const {
    constexpr std::uint64_t interval = 20'000; // microseconds; not everything is announced
    while (!condition()) {
        const int result = sd_bus_process(bus.get(), nullptr);
        if (result < 0 || (result == 0 && deadline.hasExpired())) {
            return false;
        }
        if (result == 0) {
            sd_bus_wait(bus.get(), interval);
        }
    }
    return true;
}

int ScriptedBar::find(const QString& title) const {
    if (registered.isEmpty()) {
        return 0;
    }
    for (int entry = 1;; ++entry) {
        const auto type = entryProperty(bus.get(), registered.first(), entry, "type");
        const auto label = entryProperty(bus.get(), registered.first(), entry, "label");
        const char* text = nullptr;
        if (label && sd_bus_message_read(label.get(), "v", "s", &text) > 0 &&
            title == QString::fromUtf8(text)) {
            return entry;
        }
        if (!type && !label) {
            return 0; // past the end
        }
    }
}

bool ScriptedBar::isChecked(const QString& title) const {
    if (!registered.isEmpty()) {
        sd_bus_call_method(bus.get(), registered.first().toUtf8().constData(), menuPath, menuInterface,
                           "AboutToShow", nullptr, nullptr, "i", 0);
    }
    const int entry = find(title);
    const auto state =
        entry == 0 ? nullptr : entryProperty(bus.get(), registered.first(), entry, "toggle-state");
    int on = 0;
    return state && sd_bus_message_read(state.get(), "v", "i", &on) > 0 && on == 1;
}

bool ScriptedBar::choose(const QString& title) const {
    const int entry = find(title);
    return entry != 0 &&
           sd_bus_call_method(bus.get(), registered.first().toUtf8().constData(), menuPath, menuInterface,
                              "Event", nullptr, nullptr, "isvu", entry, "clicked", "i", 0, 0U) >= 0;
}

bool ScriptedBar::giveToken(const QByteArray& token) const {
    return sd_bus_call_method(bus.get(), registered.first().toUtf8().constData(), "/StatusNotifierItem",
                              "org.kde.StatusNotifierItem", "ProvideXdgActivationToken", nullptr, nullptr,
                              "s", token.constData()) >= 0;
}

} // namespace orvantile::test
