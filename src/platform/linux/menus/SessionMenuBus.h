#pragma once

#include "platform/linux/a11y/BusConnection.h"

#include <functional>
#include <vector>

namespace orvantile::platform::menus {

/// The session bus for those who read menus from it: connected when it is needed first, and again after it
/// was lost. Main thread only.
class SessionMenuBus {
public:
    explicit SessionMenuBus(a11y::BusConnection::Hook drainFirst);

    /// The connection, opened if need be; null when there is no session bus.
    [[nodiscard]] a11y::BusConnection* open();

    /// `handler` is called when the connection has ended; all subscriptions are void then.
    void onLost(std::function<void()> handler) { handlers.push_back(std::move(handler)); }

private:
    a11y::BusConnection connection;
    std::vector<std::function<void()>> handlers;
};

} // namespace orvantile::platform::menus
