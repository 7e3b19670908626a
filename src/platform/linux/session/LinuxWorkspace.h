#pragma once

#include "platform/Workspace.h"
#include "platform/linux/session/ShortcutSource.h"

#include <functional>
#include <utility>

namespace orvantile::platform::session {

class LinuxWorkspace final : public Workspace {
public:
    /// `openSettings` opens the accessibility page of the desktop's settings, without waiting for it.
    LinuxWorkspace(ShortcutSource& source_, std::function<void()> openSettings_)
        : source(source_),
          openSettings(std::move(openSettings_)) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
    [[nodiscard]] RegistrationToken observeActivations(ActivationHandler handler) override;
    void openAccessibilitySettings() override;

private:
    ShortcutSource& source;
    std::function<void()> openSettings;
};

} // namespace orvantile::platform::session
