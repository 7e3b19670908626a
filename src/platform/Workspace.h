#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace orvantile::platform {

struct RunningApplication {
    std::int32_t processIdentifier = -1;

    friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

/// The desktop's view of running applications. Main thread only.
class Workspace {
public:
    /// The application is absent when the desktop could not say which one was activated.
    using ActivationHandler = std::function<void(std::optional<RunningApplication>)>;

    /// Names a registration. Releasing it does not end the registration, which lasts as long as the
    /// workspace.
    using RegistrationToken = std::shared_ptr<const void>;

    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;

    /// Calls `handler` from the main loop each time an application comes to the front.
    [[nodiscard]] virtual RegistrationToken observeActivations(ActivationHandler handler) = 0;

    /// Opens the page of the desktop's settings where accessibility is switched on; silent where there is
    /// none.
    virtual void openAccessibilitySettings() = 0;
};

} // namespace orvantile::platform
