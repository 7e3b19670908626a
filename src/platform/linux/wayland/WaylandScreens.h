#pragma once

#include "platform/Screens.h"
#include "platform/linux/wayland/EdgePlacement.h"
#include "platform/linux/wayland/FocusedOutput.h"
#include "platform/linux/wayland/Outputs.h"

namespace orvantile::platform::wayland {

/// The outputs of the compositor; answers come from memory.
class WaylandScreens final : public Screens {
public:
    /// Both must outlive it.
    WaylandScreens(const Outputs& outputs_, const FocusedOutput& focused_)
        : outputs(outputs_),
          focused(focused_) {}

    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::vector<Screen> screens() const override;

    /// Where a panel goes.
    struct Placement {
        std::uint32_t output = 0; ///< its name; 0 when the compositor shall take the one in use
        EdgePlacement edges;
        double scale = 1; ///< device pixels per point, as far as is known
    };

    /// Where `panel`, in screen points, goes: on the main screen if it touches that, else on the one it
    /// touches first.
    [[nodiscard]] Placement place(const Rect& panel) const;

private:
    [[nodiscard]] std::size_t mainIndex() const;

    const Outputs& outputs;
    const FocusedOutput& focused;
};

} // namespace orvantile::platform::wayland
