#include "platform/linux/x11/X11Backdrop.h"

namespace orvantile::platform::x11 {

BackdropPicture X11Backdrop::behind(const Rect& rect) {
    if (compositor.blurs()) {
        return CompositorBlurs{};
    }
    const auto placement = screens.place(rect);
    if (auto picture = grab.take(placement.pixels)) {
        return std::move(*picture);
    }
    return NoBackdrop{};
}

} // namespace orvantile::platform::x11
