#pragma once

#include "platform/linux/wayland/Globals.h"
#include "platform/linux/wayland/PixelBuffer.h"

namespace orvantile::platform::wayland {

/// A bar along an edge of the screen that keeps its place for itself, as docks do.
class Dock {
public:
    static constexpr QRgb colour = qRgb(230, 200, 0);

    /// `edge` is one of the protocol's anchors.
    Dock(const Globals& globals, std::uint32_t edge, int thickness);
    Dock(const Dock&) = delete;
    Dock& operator=(const Dock&) = delete;
    ~Dock() = default;

private:
    void draw(QSize size);

    Handle<wl_surface> surface;
    Handle<zwlr_layer_surface_v1> layer;
    PixelBuffer buffer;
};

} // namespace orvantile::platform::wayland
