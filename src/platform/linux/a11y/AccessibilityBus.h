#pragma once

#include "platform/linux/a11y/BusConnection.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvantile::platform::a11y {

/// The accessibility bus: found through the session bus, found again when it or what serves it comes back,
/// and the desktop's switch for it. Main thread only.
class AccessibilityBus {
public:
    explicit AccessibilityBus(BusConnection::Hook drainFirst);

    /// Called in turns of their own.
    std::function<void()> onConnected;
    std::function<void()> onLost;
    std::function<void()> onSwitchRead; ///< `isEnabled` is up to date

    /// Another way to the bus's address, asked when the session bus knows none.
    std::function<std::optional<std::string>()> fallbackAddress;

    /// Starts looking for the bus.
    void start();

    /// The user is doing something: looks again for what was lost, unless that has been tried a moment ago.
    void retry();

    /// Whether the bus can be used now.
    [[nodiscard]] bool isConnected() const { return connected; }

    /// Whether the desktop asks applications to join the bus.
    [[nodiscard]] bool isEnabled() const { return enabled; }

    /// Asks applications to join the bus, or not to.
    void setEnabled(bool value);

    /// Empty while unknown.
    [[nodiscard]] const std::string& address() const { return busAddress; }

    [[nodiscard]] BusConnection& connection() { return bus; }

private:
    void openSession();
    void findBus();
    void connectTo(const std::string& address);
    void readSwitch();
    void greet();
    void lose();

    BusConnection session;
    BusConnection bus;
    std::vector<SlotHandle> subscriptions;
    std::string busAddress;
    std::chrono::steady_clock::time_point latestTry;
    bool connected = false;
    bool enabled = false;
    bool finding = false;
    std::shared_ptr<const int> self = std::make_shared<int>();
};

} // namespace orvantile::platform::a11y
