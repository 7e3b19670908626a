#include "platform/linux/x11/X11Backdrop.h"

namespace orvantile::platform::x11 {

void X11Backdrop::prepare(const Rect& rect) {
    if (!compositor.blurs()) {
        grab.request(screens.place(rect).pixels);
    }
}

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
