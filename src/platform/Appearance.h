#pragma once

#include <functional>
#include <memory>

namespace orvantile::platform {

/// Whether the desktop is dark. Main thread only.
class Appearance {
public:
    /// Ends the subscription when released.
    using Token = std::shared_ptr<const void>;

    Appearance() = default;
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;
    virtual ~Appearance() = default;

    [[nodiscard]] virtual bool isDark() const = 0;

    /// Calls `handler` from the main loop after each change.
    [[nodiscard]] virtual Token observeChanges(std::function<void()> handler) = 0;
};

} // namespace orvantile::platform
