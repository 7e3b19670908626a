#include "support/desktop/SessionBusCalls.h"

#include <stdexcept>

namespace orvantile::test {
namespace {

constexpr auto launcher = "org.a11y.Bus";
constexpr auto launcherPath = "/org/a11y/bus";
constexpr auto statusInterface = "org.a11y.Status";
constexpr auto enabledProperty = "IsEnabled";

struct FreeMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

using Message = std::unique_ptr<sd_bus_message, FreeMessage>;

} // namespace

SessionBusCalls::SessionBusCalls(const QString& address) {
    sd_bus* opened = nullptr;
    sd_bus_new(&opened);
    bus.reset(opened);
    if (sd_bus_set_address(opened, address.toLatin1().constData()) < 0 ||
        sd_bus_set_bus_client(opened, 1) < 0 || sd_bus_start(opened) < 0) {
        throw std::runtime_error("no message bus at " + address.toStdString());
    }
}

QString SessionBusCalls::accessibilityBusAddress() const {
    sd_bus_message* reply = nullptr;
    const int result =
        sd_bus_call_method(bus.get(), launcher, launcherPath, launcher, "GetAddress", nullptr, &reply, "");
    const Message owned(reply);
    const char* address = nullptr;
    if (result < 0 || sd_bus_message_read(reply, "s", &address) <= 0) {
        return {};
    }
    return QString::fromUtf8(address);
}

bool SessionBusCalls::accessibilityEnabled() const {
    int enabled = 0;
    return sd_bus_get_property_trivial(bus.get(), launcher, launcherPath, statusInterface, enabledProperty,
                                       nullptr, 'b', &enabled) >= 0 &&
           enabled != 0;
}

void SessionBusCalls::setAccessibilityEnabled(bool enabled) const {
    sd_bus_set_property(bus.get(), launcher, launcherPath, statusInterface, enabledProperty, nullptr, "b",
                        static_cast<int>(enabled));
}

pid_t SessionBusCalls::ownerOf(const QString& name) const {
    sd_bus_message* reply = nullptr;
    const int result =
        sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "GetConnectionUnixProcessID", nullptr, &reply, "s", name.toUtf8().constData());
    const Message owned(reply);
    std::uint32_t process = 0;
    return result >= 0 && sd_bus_message_read(reply, "u", &process) > 0 ? static_cast<pid_t>(process) : 0;
}

QStringList SessionBusCalls::connectionsOf(pid_t process) const {
    QStringList names;
    sd_bus_message* reply = nullptr;
    const int result = sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", "ListNames", nullptr, &reply, "");
    const Message owned(reply);
    if (result < 0 || sd_bus_message_enter_container(reply, 'a', "s") <= 0) {
        return names;
    }
    const char* name = nullptr;
    while (sd_bus_message_read(reply, "s", &name) > 0) {
        if (name[0] == ':' && ownerOf(QString::fromLatin1(name)) == process) {
            names.append(QString::fromLatin1(name));
        }
    }
    return names;
}

bool SessionBusCalls::answers(const QString& name, std::chrono::milliseconds patience) const {
    sd_bus_message* ping = nullptr;
    const bool made = sd_bus_message_new_method_call(bus.get(), &ping, name.toUtf8().constData(), "/",
                                                     "org.freedesktop.DBus.Peer", "Ping") >= 0;
    const Message owned(ping);
    const auto time = std::chrono::duration_cast<std::chrono::microseconds>(patience).count();
    return made && sd_bus_call(bus.get(), ping, static_cast<std::uint64_t>(time), nullptr, nullptr) >= 0;
}

std::size_t SessionBusCalls::matchRules(const QString& connection) const {
    sd_bus_message* reply = nullptr;
    const int result = sd_bus_call_method(bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus.Debug.Stats", "GetConnectionStats", nullptr,
                                          &reply, "s", connection.toUtf8().constData());
    const Message owned(reply);
    if (result < 0 || sd_bus_message_enter_container(reply, 'a', "{sv}") <= 0) {
        return 0;
    }
    while (sd_bus_message_enter_container(reply, 'e', "sv") > 0) {
        const char* name = nullptr;
        std::uint32_t value = 0;
        if (sd_bus_message_read(reply, "s", &name) <= 0) {
            return 0;
        }
        if (QLatin1StringView(name) == QLatin1StringView("MatchRules")) {
            return sd_bus_message_read(reply, "v", "u", &value) > 0 ? value : 0;
        }
        if (sd_bus_message_skip(reply, "v") < 0 || sd_bus_message_exit_container(reply) < 0) {
            return 0;
        }
    }
    return 0;
}

} // namespace orvantile::test
