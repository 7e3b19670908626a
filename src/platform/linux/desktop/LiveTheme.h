#pragma once

#include <functional>
#include <optional>

namespace orvantile::platform::desktop {

/// What a running desktop tells its programs about the theme in use. Main thread only.
class LiveTheme {
public:
    LiveTheme() = default;
    LiveTheme(const LiveTheme&) = delete;
    LiveTheme& operator=(const LiveTheme&) = delete;
    virtual ~LiveTheme() = default;

    /// Absent when the desktop does not say.
    [[nodiscard]] virtual std::optional<bool> isDark() const = 0;

    /// Called when that has changed.
    std::function<void()> onChanged;
};

} // namespace orvantile::platform::desktop
