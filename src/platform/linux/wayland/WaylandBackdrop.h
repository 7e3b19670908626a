#pragma once

#include "platform/Backdrop.h"
#include "platform/linux/wayland/Globals.h"

namespace orvantile::platform::wayland {

/// No client may look at what others show: the compositor blurs by itself, or nobody does.
class WaylandBackdrop final : public Backdrop {
public:
    explicit WaylandBackdrop(const Globals& globals_) : globals(globals_) {}

    [[nodiscard]] BackdropPicture behind(const Rect& rect) override;

private:
    const Globals& globals;
};

} // namespace orvantile::platform::wayland
