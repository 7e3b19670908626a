#pragma once

#include "platform/Workspace.h"
#include "platform/linux/session/ShortcutSource.h"

namespace orvantile::platform::session {

class LinuxWorkspace final : public Workspace {
public:
    explicit LinuxWorkspace(ShortcutSource& source_) : source(source_) {}

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
    [[nodiscard]] RegistrationToken observeActivations(ActivationHandler handler) override;
    void openAccessibilitySettings() override;

private:
    ShortcutSource& source;
};

} // namespace orvantile::platform::session
