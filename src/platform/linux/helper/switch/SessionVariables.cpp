#include "platform/linux/helper/switch/SessionVariables.h"

#include <utility>

namespace orvantile::platform::helper {

void sendToSession(desktop::SessionBus& bus, const HelperVariables& variables) {
    constexpr auto busName = "org.freedesktop.DBus";
    if (auto order = bus.method(busName, "/org/freedesktop/DBus", busName, "UpdateActivationEnvironment");
        order && sd_bus_message_append(order.get(), "a{ss}", 2, HelperVariables::pluginPathName,
                                       variables.pluginPath.constData(), HelperVariables::pluginsName,
                                       variables.plugins.constData()) >= 0) {
        bus.send(std::move(order));
    }
    const QByteArray path = QByteArray(HelperVariables::pluginPathName) + '=' + variables.pluginPath;
    const QByteArray plugins = QByteArray(HelperVariables::pluginsName) + '=' + variables.plugins;
    if (auto order = bus.method("org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                                "org.freedesktop.systemd1.Manager", "SetEnvironment");
        order && sd_bus_message_set_auto_start(order.get(), 0) >= 0 &&
        sd_bus_message_append(order.get(), "as", 2, path.constData(), plugins.constData()) >= 0) {
        bus.send(std::move(order));
    }
}

} // namespace orvantile::platform::helper
