#include "platform/linux/desktop/accessibilitysettings/BusPanel.h"

#include "platform/linux/desktop/bus/BusHandles.h"

#include <chrono>
#include <cstdint>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

/// What the bus itself grants a program to start (its default).
constexpr std::chrono::seconds patience{25};

struct BusError {
    BusError() = default;
    BusError(const BusError&) = delete;
    BusError& operator=(const BusError&) = delete;

    ~BusError() { sd_bus_error_free(&error); }

    sd_bus_error error = SD_BUS_ERROR_NULL;
};

BusHandle connect(const QProcessEnvironment& environment) {
    auto address = environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s);
    if (address.isEmpty()) {
        address = u"unix:path="_s + environment.value(u"XDG_RUNTIME_DIR"_s) + u"/bus"_s;
    }
    sd_bus* created = nullptr;
    if (sd_bus_new(&created) < 0) {
        return nullptr;
    }
    BusHandle bus(created);
    if (sd_bus_set_address(created, address.toUtf8().constData()) < 0 ||
        sd_bus_set_bus_client(created, 1) < 0 || sd_bus_start(created) < 0) {
        return nullptr;
    }
    return bus;
}

/// The path that belongs to an application's name.
QByteArray objectPath(const QString& name) {
    return '/' + name.toLatin1().replace('.', '/').replace('-', '_');
}

int appendToken(sd_bus_message* message, const char* key, const QByteArray& token) {
    return token.isEmpty() ? 0 : sd_bus_message_append(message, "{sv}", key, "s", token.constData());
}

/// The panel's name without arguments for it, and how the window may come to the front.
MessageHandle composeRequest(sd_bus* bus, const BusPage& page, const QByteArray& token) {
    sd_bus_message* created = nullptr;
    sd_bus_message_new_method_call(bus, &created, page.name.toLatin1().constData(),
                                   objectPath(page.name).constData(), "org.freedesktop.Application",
                                   "ActivateAction");
    MessageHandle message(created);
    const bool complete = message &&
                          sd_bus_message_append(created, "sav", "launch-panel", 1, "(sav)",
                                                page.panel.toUtf8().constData(), 0) >= 0 &&
                          sd_bus_message_open_container(created, 'a', "{sv}") >= 0 &&
                          appendToken(created, "desktop-startup-id", token) >= 0 &&
                          appendToken(created, "activation-token", token) >= 0 &&
                          sd_bus_message_close_container(created) >= 0;
    return complete ? std::move(message) : nullptr;
}

} // namespace

bool activatePanel(const BusPage& page, const Launch& launch) {
    const auto bus = connect(launch.environment);
    const auto request = bus ? composeRequest(bus.get(), page, launch.token.toUtf8()) : nullptr;
    if (!request) {
        return false;
    }
    BusError failure;
    const auto limit = static_cast<std::uint64_t>(std::chrono::microseconds(patience).count());
    return sd_bus_call(bus.get(), request.get(), limit, &failure.error, nullptr) >= 0 ||
           sd_bus_error_has_name(&failure.error, SD_BUS_ERROR_NO_REPLY) != 0;
}

} // namespace orvantile::platform::desktop
