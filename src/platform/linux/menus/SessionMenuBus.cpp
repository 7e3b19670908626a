#include "platform/linux/menus/SessionMenuBus.h"

#include "platform/linux/a11y/SessionAddress.h"

#include <utility>

namespace orvantile::platform::menus {

SessionMenuBus::SessionMenuBus(a11y::BusConnection::Hook drainFirst) : connection(std::move(drainFirst)) {
    connection.onClosed = [this] {
        for (const auto& handler : handlers) {
            handler();
        }
    };
}

a11y::BusConnection* SessionMenuBus::open() {
    return connection.isOpen() || connection.open(a11y::sessionAddress()) ? &connection : nullptr;
}

} // namespace orvantile::platform::menus
