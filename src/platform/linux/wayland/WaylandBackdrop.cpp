#include "platform/linux/wayland/WaylandBackdrop.h"

namespace orvantile::platform::wayland {

BackdropPicture WaylandBackdrop::behind(const Rect&) {
    if (globals.blur.stands()) {
        return CompositorBlurs{};
    }
    return NoBackdrop{};
}

} // namespace orvantile::platform::wayland
