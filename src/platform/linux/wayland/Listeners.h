#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace orvantile::platform::wayland {

/// Those who want to hear of a change. Main thread only.
class Listeners {
public:
    /// Ends the listening when released.
    using Token = std::shared_ptr<const void>;

    [[nodiscard]] Token add(std::function<void()> listener);

    /// Calls all who still listen; they may add and release listeners meanwhile.
    void notify();

private:
    std::vector<std::weak_ptr<const std::function<void()>>> all;
};

} // namespace orvantile::platform::wayland
