#include "platform/linux/wayland/LayerSurface.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantile::platform::wayland {
namespace {

LayerSurface& self(void* data) {
    return *static_cast<LayerSurface*>(data);
}

using RegionHandle = Handle<wl_region>;

std::uint32_t anchor(Side side, std::uint32_t near, std::uint32_t far) {
    return side == Side::near ? near : side == Side::far ? far : 0;
}

} // namespace

LayerSurface::LayerSurface(const Globals& globals_, Outputs& outputs_, std::uint32_t output_,
                           const EdgePlacement& placement_, double scale)
    : globals(globals_),
      outputs(outputs_),
      output(output_),
      placement(placement_),
      currentScale(scale),
      surface(wl_compositor_create_surface(globals.compositor.get())) {
    outputsToken = outputs.listen([this] { scaleForOutputs(); });
    followScale();
    const auto* wanted = outputs.find(output);
    layer.reset(zwlr_layer_shell_v1_get_layer_surface(globals.layers.get(), surface.get(),
                                                      wanted != nullptr ? wanted->get() : nullptr,
                                                      ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, "orvantile"));
    listen();
    zwlr_layer_surface_v1_set_keyboard_interactivity(layer.get(),
                                                     ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    zwlr_layer_surface_v1_set_exclusive_zone(layer.get(), 0); // within what panels and docks leave
    const RegionHandle nothing(wl_compositor_create_region(globals.compositor.get()));
    wl_surface_set_input_region(surface.get(), nothing.get());
    arrange();
    wl_surface_commit(surface.get()); // without a picture: asks for the surface
}

void LayerSurface::followScale() {
    static constexpr wl_surface_listener listener{.enter =
                                                      [](void* data, wl_surface*, wl_output* on) {
                                                          self(data).entered.push_back(on);
                                                          self(data).scaleForOutputs();
                                                      },
                                                  .leave =
                                                      [](void* data, wl_surface*, wl_output* off) {
                                                          std::erase(self(data).entered, off);
                                                          self(data).scaleForOutputs();
                                                      }};
    wl_surface_add_listener(surface.get(), &listener, this);
    const auto* wanted = outputs.find(output);
    if (!globals.viewports) {
        currentScale = wanted != nullptr ? wanted->geometry().bufferScale : std::ceil(currentScale);
        return;
    }
    viewport.reset(wp_viewporter_get_viewport(globals.viewports.get(), surface.get()));
    if (globals.fractionalScales) {
        static constexpr wp_fractional_scale_v1_listener scaleListener{
            .preferred_scale = [](void* data, wp_fractional_scale_v1*, std::uint32_t scale) {
                constexpr double denominator = 120;
                self(data).setScale(scale / denominator);
            }};
        fractionalScale.reset(wp_fractional_scale_manager_v1_get_fractional_scale(
            globals.fractionalScales.get(), surface.get()));
        wp_fractional_scale_v1_add_listener(fractionalScale.get(), &scaleListener, this);
    }
}

void LayerSurface::listen() {
    static constexpr zwlr_layer_surface_v1_listener listener{
        .configure =
            [](void* data, zwlr_layer_surface_v1* role, std::uint32_t serial, std::uint32_t, std::uint32_t) {
                zwlr_layer_surface_v1_ack_configure(role, serial);
                if (!std::exchange(self(data).configured, true)) {
                    self(data).onReady();
                }
            },
        .closed = [](void* data, zwlr_layer_surface_v1*) { self(data).onClosed(); }};
    zwlr_layer_surface_v1_add_listener(layer.get(), &listener, this);
}

void LayerSurface::scaleForOutputs() {
    if (fractionalScale) {
        return;
    }
    double highest = 0;
    for (const auto* each : entered) {
        if (const auto* known = outputs.find(outputs.nameOf(each))) {
            const auto& geometry = known->geometry();
            // Without the protocol for it, a viewport still takes a picture of the exact size.
            highest = std::max(highest, viewport ? geometry.scale() : geometry.bufferScale);
        }
    }
    if (highest > 0) {
        setScale(highest);
    }
}

void LayerSurface::setScale(double scale) {
    if (scale > 0 && scale != currentScale) {
        currentScale = scale;
        onScaleChanged();
    }
}

void LayerSurface::place(const EdgePlacement& next) {
    if (placement != next) {
        placement = next;
        arrange();
    }
}

void LayerSurface::arrange() {
    const auto edges =
        anchor(placement.horizontal, ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT, ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT) |
        anchor(placement.vertical, ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP, ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM);
    zwlr_layer_surface_v1_set_anchor(layer.get(), edges);
    zwlr_layer_surface_v1_set_size(layer.get(), static_cast<std::uint32_t>(placement.size.width()),
                                   static_cast<std::uint32_t>(placement.size.height()));
    zwlr_layer_surface_v1_set_margin(layer.get(), placement.verticalMargin, placement.horizontalMargin,
                                     placement.verticalMargin, placement.horizontalMargin);
    if (viewport) {
        wp_viewport_set_destination(viewport.get(), placement.size.width(), placement.size.height());
    }
}

QSize LayerSurface::pixelSize() const {
    const auto pixels = [&](int points) { return static_cast<int>(std::lround(points * currentScale)); };
    return {pixels(placement.size.width()), pixels(placement.size.height())};
}

void LayerSurface::show(PixelBuffer& picture) {
    static constexpr wl_callback_listener listener{.done = [](void* data, wl_callback*, std::uint32_t) {
        self(data).frame.reset();
        self(data).onReady();
    }};
    if (!viewport) {
        wl_surface_set_buffer_scale(surface.get(), static_cast<int>(currentScale));
    }
    frame.reset(wl_surface_frame(surface.get()));
    wl_callback_add_listener(frame.get(), &listener, this);
    wl_surface_attach(surface.get(), picture.send(), 0, 0);
    wl_surface_damage_buffer(surface.get(), 0, 0, pixelSize().width(), pixelSize().height());
    wl_surface_commit(surface.get());
    drawn = true;
}

} // namespace orvantile::platform::wayland
