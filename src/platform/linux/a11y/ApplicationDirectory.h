#pragma once

#include "platform/linux/a11y/BusConnection.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvantile::platform::a11y {

/// The applications on the accessibility bus and whose processes they are, kept up to date. Lives as long as
/// the connection is up. Main thread only.
class ApplicationDirectory {
public:
    explicit ApplicationDirectory(BusConnection& bus);

    /// A process has come to be known by this bus name, or is not any more.
    std::function<void(std::int32_t processIdentifier, const std::string& name)> onAppeared;
    std::function<void(const std::string& name)> onGone;

    /// The registry of applications has been started again and remembers nothing.
    std::function<void()> onRegistryRestarted;

    /// Subscribes and asks who is there. The handlers are set before.
    void start();

    /// Asks again who is there.
    void refresh();

private:
    void learn(const std::string& name);
    void forget(const std::string& name);
    void ownerChanged(sd_bus_message& message);
    void childrenChanged(sd_bus_message& message);

    BusConnection& bus;
    std::unordered_map<std::string, std::optional<std::int32_t>> processes; ///< absent while being asked
    std::vector<SlotHandle> subscriptions;
    std::shared_ptr<const int> self = std::make_shared<int>();
};

} // namespace orvantile::platform::a11y
