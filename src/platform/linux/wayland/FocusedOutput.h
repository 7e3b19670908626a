#pragma once

#include "platform/linux/wayland/Globals.h"
#include "platform/linux/wayland/Outputs.h"
#include "platform/linux/wayland/Toplevels.h"

#include <optional>

namespace orvantile::platform::wayland {

/// The output that holds the focused window, where the compositor lists its windows. Listens only while there
/// are several outputs to choose from.
class FocusedOutput {
public:
    FocusedOutput(const Globals& globals, Outputs& outputs);
    FocusedOutput(const FocusedOutput&) = delete;
    FocusedOutput& operator=(const FocusedOutput&) = delete;
    ~FocusedOutput() = default;

    /// The name of the output; 0 while it is not known, when the compositor knows best.
    [[nodiscard]] std::uint32_t name() const;

private:
    void outputsChanged();

    const Globals& globals;
    const Outputs& outputs;
    Listeners::Token token;
    std::optional<Toplevels> windows;
};

} // namespace orvantile::platform::wayland
