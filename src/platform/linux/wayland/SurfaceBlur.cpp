#include "platform/linux/wayland/SurfaceBlur.h"

#include <utility>

namespace orvantile::platform::wayland {

SurfaceBlur::SurfaceBlur(const Globals& globals_, wl_surface& surface_)
    : globals(globals_),
      surface(surface_),
      revision(globals.blur.revision()) {}

void SurfaceBlur::setRegion(const QRegion& region) {
    const bool newOffer = std::exchange(revision, globals.blur.revision()) != globals.blur.revision();
    if (newOffer) {
        giveUp();
    }
    if (region == current) {
        return;
    }
    current = region;
    if (region.isEmpty()) {
        giveUp();
        return;
    }
    const Handle<wl_region> shape(wl_compositor_create_region(globals.compositor.get()));
    for (const auto& rect : region) {
        wl_region_add(shape.get(), rect.x(), rect.y(), rect.width(), rect.height());
    }
    ask(shape.get());
}

void SurfaceBlur::giveUp() {
    current = {};
    effect.reset(); // takes the blur along
    if (kde) {
        kde.reset();
        if (auto* manager = globals.blur.kde()) {
            org_kde_kwin_blur_manager_unset(manager, &surface);
        }
    }
}

void SurfaceBlur::ask(wl_region* shape) {
    if (auto* effects = globals.blur.effects()) {
        if (!effect) {
            effect.reset(ext_background_effect_manager_v1_get_background_effect(effects, &surface));
        }
        ext_background_effect_surface_v1_set_blur_region(effect.get(), shape);
    } else if (auto* manager = globals.blur.kde()) {
        if (!kde) {
            kde.reset(org_kde_kwin_blur_manager_create(manager, &surface));
        }
        org_kde_kwin_blur_set_region(kde.get(), shape);
        org_kde_kwin_blur_commit(kde.get());
    }
}

} // namespace orvantile::platform::wayland
