#include "platform/linux/wayland/FocusedOutput.h"

namespace orvantile::platform::wayland {

FocusedOutput::FocusedOutput(const Globals& globals_, Outputs& outputs_)
    : globals(globals_),
      outputs(outputs_),
      token(outputs_.listen([this] { outputsChanged(); })) {
    outputsChanged();
}

void FocusedOutput::outputsChanged() {
    const bool wanted = globals.listsWindows() && outputs.names().size() > 1;
    if (wanted && !windows) {
        windows.emplace(globals);
    } else if (!wanted) {
        windows.reset();
    }
}

std::uint32_t FocusedOutput::name() const {
    const auto* output = windows ? windows->focusedOutput() : nullptr;
    return output == nullptr ? 0 : outputs.nameOf(output);
}

} // namespace orvantile::platform::wayland
