#include "platform/linux/session/LinuxWorkspace.h"

#include <utility>

namespace orvantile::platform::session {

std::optional<RunningApplication> LinuxWorkspace::frontmostApplication() const {
    return source.frontmostApplication();
}

Workspace::RegistrationToken LinuxWorkspace::observeActivations(ActivationHandler handler) {
    source.observeActivations(std::move(handler));
    return std::make_shared<int>();
}

void LinuxWorkspace::openAccessibilitySettings() {
    openSettings();
}

} // namespace orvantile::platform::session
