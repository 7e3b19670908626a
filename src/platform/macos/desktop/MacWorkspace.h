#pragma once

#include "platform/Workspace.h"

#include <memory>

namespace orvantile::platform::macos {

/// The system's workspace: applications in front, and the way into the system's settings.
class MacWorkspace final : public Workspace {
public:
    MacWorkspace();
    MacWorkspace(const MacWorkspace&) = delete;
    MacWorkspace& operator=(const MacWorkspace&) = delete;

    /// Ends all registrations.
    ~MacWorkspace() override;

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
    [[nodiscard]] RegistrationToken observeActivations(ActivationHandler handler) override;
    void openAccessibilitySettings() override;

private:
    struct Registrations;
    std::unique_ptr<Registrations> registrations;
};

} // namespace orvantile::platform::macos
