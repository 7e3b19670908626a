#pragma once

#include "platform/linux/wayland/EdgePlacement.h"
#include "platform/linux/wayland/Globals.h"
#include "platform/linux/wayland/Outputs.h"
#include "platform/linux/wayland/PixelBuffer.h"
#include "platform/linux/wayland/SurfaceBlur.h"

#include <QRegion>
#include <functional>
#include <vector>

namespace orvantile::platform::wayland {

/// A surface above everything that takes neither the keyboard nor the mouse. It comes up with its first
/// picture and goes with this object.
class LayerSurface {
public:
    /// `output`: the name of the output, or 0 to leave the choice to the compositor, which takes the one in
    /// use. `scale`: the likely one, until the compositor tells.
    LayerSurface(const Globals& globals, Outputs& outputs, std::uint32_t output,
                 const EdgePlacement& placement, double scale);
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;
    ~LayerSurface() = default;

    [[nodiscard]] std::uint32_t wantedOutput() const { return output; }

    /// Moves and resizes with the next picture.
    void place(const EdgePlacement& placement);

    /// Device pixels per point.
    [[nodiscard]] double scale() const { return currentScale; }

    /// The size of a picture, in device pixels.
    [[nodiscard]] QSize pixelSize() const;

    /// Whether the compositor wants a picture now. False until it has agreed to the surface, and until it has
    /// shown the picture before.
    [[nodiscard]] bool isReady() const { return configured && !frame; }

    /// Whether it has been on the screen.
    [[nodiscard]] bool hasPicture() const { return drawn; }

    /// The part behind which the compositor shall blur, in points from the surface's corner, with the next
    /// picture. Nothing where it does not blur.
    void setBlur(const QRegion& region) { blur.setRegion(region); }

    /// Puts a picture of `pixelSize()` on the screen.
    void show(PixelBuffer& picture);

    std::function<void()> onReady;        ///< `isReady` holds again
    std::function<void()> onScaleChanged; ///< `scale` and `pixelSize` have changed
    std::function<void()> onClosed; ///< the compositor shows it no longer; the object may be destroyed inside

private:
    void listen();
    void followScale();
    void arrange();
    void setScale(double scale);
    void scaleForOutputs();

    const Globals& globals;
    Outputs& outputs;
    std::uint32_t output;
    EdgePlacement placement;
    double currentScale;
    Handle<wl_surface> surface;
    Handle<wp_viewport> viewport;
    Handle<wp_fractional_scale_v1> fractionalScale;
    SurfaceBlur blur{globals, *surface};
    Handle<zwlr_layer_surface_v1> layer;
    Handle<wl_callback> frame;             ///< while the compositor has not shown the last picture
    std::vector<const wl_output*> entered; ///< only compared
    Listeners::Token outputsToken;
    bool configured = false;
    bool drawn = false;
};

} // namespace orvantile::platform::wayland
