#pragma once

#include "platform/Backdrop.h"
#include "platform/linux/x11/Compositor.h"
#include "platform/linux/x11/ScreenGrab.h"
#include "platform/linux/x11/X11Screens.h"

namespace orvantile::platform::x11 {

class X11Backdrop final : public Backdrop {
public:
    X11Backdrop(const X11Screens& screens_, const Compositor& compositor_, ScreenGrab& grab_)
        : screens(screens_),
          compositor(compositor_),
          grab(grab_) {}

    void prepare(const Rect& rect) override;
    [[nodiscard]] BackdropPicture behind(const Rect& rect) override;

private:
    const X11Screens& screens;
    const Compositor& compositor;
    ScreenGrab& grab;
};

} // namespace orvantile::platform::x11
