#include "desktop/wayland/Dock.h"

namespace orvantile::platform::wayland {

Dock::Dock(const Globals& globals, std::uint32_t edge, int thickness)
    : surface(wl_compositor_create_surface(globals.compositor.get())),
      buffer(*globals.memory) {
    constexpr std::uint32_t layerOfDocks = 2;
    static constexpr zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void* data, zwlr_layer_surface_v1* role, std::uint32_t serial, std::uint32_t width,
               std::uint32_t height) {
                zwlr_layer_surface_v1_ack_configure(role, serial);
                static_cast<Dock*>(data)->draw({static_cast<int>(width), static_cast<int>(height)});
            },
        .closed = [](void*, zwlr_layer_surface_v1*) {}};
    layer.reset(zwlr_layer_shell_v1_get_layer_surface(globals.layers.get(), surface.get(), nullptr,
                                                      layerOfDocks, "dock"));
    zwlr_layer_surface_v1_add_listener(layer.get(), &listener, this);
    constexpr std::uint32_t sideways = ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
    constexpr std::uint32_t upright = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM;
    const bool lies = (edge & upright) != 0;
    const auto thin = static_cast<std::uint32_t>(thickness);
    zwlr_layer_surface_v1_set_anchor(layer.get(), edge | (lies ? sideways : upright));
    zwlr_layer_surface_v1_set_size(layer.get(), lies ? 0 : thin, lies ? thin : 0);
    zwlr_layer_surface_v1_set_exclusive_zone(layer.get(), thickness);
    wl_surface_commit(surface.get());
}

void Dock::draw(QSize size) {
    if (buffer.isBusy() || !buffer.fit(size)) {
        return;
    }
    buffer.image().fill(colour);
    wl_surface_attach(surface.get(), buffer.send(), 0, 0);
    wl_surface_damage_buffer(surface.get(), 0, 0, size.width(), size.height());
    wl_surface_commit(surface.get());
}

} // namespace orvantile::platform::wayland
