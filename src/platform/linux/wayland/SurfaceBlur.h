#pragma once

#include "platform/linux/wayland/Globals.h"

#include <QRegion>

namespace orvantile::platform::wayland {

/// The blur behind one surface. Must not outlive it.
class SurfaceBlur {
public:
    SurfaceBlur(const Globals& globals, wl_surface& surface);
    SurfaceBlur(const SurfaceBlur&) = delete;
    SurfaceBlur& operator=(const SurfaceBlur&) = delete;
    ~SurfaceBlur() = default;

    /// The part behind which the compositor shall blur with the next picture, in points from the surface's
    /// corner. Nothing happens where it does not blur.
    void setRegion(const QRegion& region);

private:
    void giveUp();
    void ask(wl_region* shape);

    const Globals& globals;
    wl_surface& surface;
    Handle<ext_background_effect_surface_v1> effect;
    Handle<org_kde_kwin_blur> kde;
    QRegion current;
    unsigned revision = 0; ///< of the offer that `current` was asked of
};

} // namespace orvantile::platform::wayland
