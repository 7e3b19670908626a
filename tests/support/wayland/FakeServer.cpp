#include "support/wayland/FakeServer.h"

#include <algorithm>
#include <ext-background-effect-v1-server.h>
#include <kde-blur-server.h>
#include <utility>
#include <wayland-server-protocol.h>
#include <wlr-layer-shell-unstable-v1-server.h>

namespace orvantile::test {
namespace {

FakeServer& of(wl_resource* resource) {
    return *static_cast<FakeServer*>(wl_resource_get_user_data(resource));
}

void destroy(wl_client*, wl_resource* resource) {
    wl_resource_destroy(resource);
}

constexpr struct wl_region_interface regionRequests {
    .destroy = destroy,
    .add = [](wl_client*, wl_resource* region, std::int32_t x, std::int32_t y, std::int32_t width,
              std::int32_t height) { of(region).regions[region] += QRect(x, y, width, height); },
    .subtract = [](wl_client*, wl_resource* region, std::int32_t x, std::int32_t y, std::int32_t width,
                   std::int32_t height) { of(region).regions[region] -= QRect(x, y, width, height); }
};

constexpr struct wl_surface_interface surfaceRequests {
    .destroy = destroy,
    .attach = [](wl_client*, wl_resource* surface, wl_resource* buffer, std::int32_t,
                 std::int32_t) { of(surface).surfaces[surface].buffer = buffer; },
    .damage = [](wl_client*, wl_resource*, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {},
    .frame =
        [](wl_client* client, wl_resource* surface, std::uint32_t id) {
            of(surface).surfaces[surface].frames.push_back(
                wl_resource_create(client, &wl_callback_interface, 1, id));
        },
    .set_opaque_region = [](wl_client*, wl_resource*, wl_resource*) {},
    .set_input_region = [](wl_client*, wl_resource*, wl_resource*) {},
    .commit = [](wl_client*, wl_resource* surface) { of(surface).commit(surface); },
    .set_buffer_transform = [](wl_client*, wl_resource*, std::int32_t) {},
    .set_buffer_scale = [](wl_client*, wl_resource* surface,
                           std::int32_t scale) { of(surface).surfaces[surface].pending.bufferScale = scale; },
    .damage_buffer = [](wl_client*, wl_resource*, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {},
    .offset = [](wl_client*, wl_resource*, std::int32_t, std::int32_t) {}
};

constexpr struct wl_compositor_interface compositorRequests {
    .create_surface =
        [](wl_client* client, wl_resource* compositor, std::uint32_t id) {
            auto& server = of(compositor);
            auto* surface = server.make(client, id, wl_surface_interface, surfaceRequests, 4);
            server.surfaces[surface].age = ++server.surfacesMade;
        },
    .create_region = [](wl_client* client, wl_resource* compositor, std::uint32_t id) {
        of(compositor).make(client, id, wl_region_interface, regionRequests, 1);
    }
};

constexpr struct wl_output_interface outputRequests { .release = destroy };

constexpr struct zwlr_layer_surface_v1_interface layerSurfaceRequests {
    .set_size = [](wl_client*, wl_resource*, std::uint32_t, std::uint32_t) {},
    .set_anchor = [](wl_client*, wl_resource*, std::uint32_t) {},
    .set_exclusive_zone = [](wl_client*, wl_resource*, std::int32_t) {},
    .set_margin = [](wl_client*, wl_resource*, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {},
    .set_keyboard_interactivity = [](wl_client*, wl_resource*, std::uint32_t) {},
    .get_popup = [](wl_client*, wl_resource*, wl_resource*) {},
    .ack_configure = [](wl_client*, wl_resource*, std::uint32_t) {}, .destroy = destroy
};

constexpr struct zwlr_layer_shell_v1_interface layerShellRequests {
    .get_layer_surface = [](wl_client* client, wl_resource* shell, std::uint32_t id, wl_resource* surface,
                            wl_resource*, std::uint32_t, const char*) {
        auto& server = of(shell);
        server.surfaces[surface].role =
            server.make(client, id, zwlr_layer_surface_v1_interface, layerSurfaceRequests, 2);
    }
};

constexpr struct org_kde_kwin_blur_interface kdeBlurRequests {
    .commit =
        [](wl_client*, wl_resource* blur) {
            auto& server = of(blur);
            const auto& [surface, region] = server.kdeBlurs.at(blur);
            if (server.surfaces.contains(surface)) {
                server.surfaces[surface].pending.kdeBlur = region;
            }
        },
    .set_region = [](wl_client*, wl_resource* blur,
                     wl_resource* region) { of(blur).kdeBlurs.at(blur).region = of(blur).regionOf(region); },
    .release = destroy
};

constexpr struct org_kde_kwin_blur_manager_interface kdeManagerRequests {
    .create =
        [](wl_client* client, wl_resource* manager, std::uint32_t id, wl_resource* surface) {
            auto& server = of(manager);
            auto* blur = server.make(client, id, org_kde_kwin_blur_interface, kdeBlurRequests, 1);
            server.kdeBlurs[blur] = {surface, {}};
        },
    .unset = [](wl_client*, wl_resource* manager, wl_resource* surface) {
        of(manager).surfaces.at(surface).pending.kdeBlur = {};
    }
};

constexpr struct ext_background_effect_surface_v1_interface effectRequests {
    .destroy = destroy, .set_blur_region = [](wl_client*, wl_resource* effect, wl_resource* region) {
        auto& server = of(effect);
        if (const auto surface = server.surfaces.find(server.effects.at(effect));
            surface != server.surfaces.end()) {
            surface->second.pending.effectBlur = server.regionOf(region);
        }
    }
};

constexpr struct ext_background_effect_manager_v1_interface effectManagerRequests {
    .destroy = destroy, .get_background_effect = [](wl_client* client, wl_resource* manager, std::uint32_t id,
                                                    wl_resource* surface) {
        auto& server = of(manager);
        constexpr std::uint32_t exists = 0;
        if (std::ranges::any_of(server.effects, [&](const auto& each) { return each.second == surface; })) {
            wl_resource_post_error(manager, exists, "the surface has an effect already");
            return;
        }
        auto* effect = server.make(client, id, ext_background_effect_surface_v1_interface, effectRequests, 1);
        server.effects[effect] = surface;
    }
};

void describe(wl_resource* output, int scale) {
    wl_output_send_geometry(output, 0, 0, 300, 200, WL_OUTPUT_SUBPIXEL_UNKNOWN, "none", "none",
                            WL_OUTPUT_TRANSFORM_NORMAL);
    wl_output_send_mode(output, WL_OUTPUT_MODE_CURRENT, 1280, 800, 60000);
    wl_output_send_scale(output, scale);
    wl_output_send_done(output);
}

} // namespace

FakeServer::FakeServer() {
    wl_display_init_shm(thread.display());
    offer<[](FakeServer& server, wl_client* client, int version, std::uint32_t id) {
        server.make(client, id, wl_compositor_interface, compositorRequests, version);
    }>(wl_compositor_interface, 4);
    offer<[](FakeServer& server, wl_client* client, int version, std::uint32_t id) {
        auto* output = server.make(client, id, wl_output_interface, outputRequests, version);
        server.outputs.push_back(output);
        describe(output, server.outputScale);
    }>(wl_output_interface, 3);
    offer<[](FakeServer& server, wl_client* client, int version, std::uint32_t id) {
        server.make(client, id, zwlr_layer_shell_v1_interface, layerShellRequests, version);
    }>(zwlr_layer_shell_v1_interface, 2);
    thread.start();
}

void FakeServer::forget(wl_resource* gone) {
    if (const auto effect = effects.find(gone); effect != effects.end()) {
        if (const auto surface = surfaces.find(effect->second); surface != surfaces.end()) {
            surface->second.pending.effectBlur = {};
        }
        effects.erase(effect);
    }
    for (auto& [resource, surface] : surfaces) {
        surface.role = surface.role == gone ? nullptr : surface.role;
    }
    kdeBlurs.erase(gone); // what was committed stays
    regions.erase(gone);
    surfaces.erase(gone);
    std::erase(outputs, gone);
    std::erase(effectManagers, gone);
}

void FakeServer::commit(wl_resource* resource) {
    auto& surface = surfaces.at(resource);
    if (surface.role != nullptr && !std::exchange(surface.configured, true)) {
        if (refuses) {
            zwlr_layer_surface_v1_send_closed(surface.role);
        } else {
            zwlr_layer_surface_v1_send_configure(surface.role, 1, 0, 0);
        }
    }
    if (auto* buffer = std::exchange(surface.buffer, nullptr)) {
        auto* shared = wl_shm_buffer_get(buffer);
        wl_shm_buffer_begin_access(shared);
        const QImage picture(static_cast<const uchar*>(wl_shm_buffer_get_data(shared)),
                             wl_shm_buffer_get_width(shared), wl_shm_buffer_get_height(shared),
                             wl_shm_buffer_get_stride(shared), QImage::Format_ARGB32_Premultiplied);
        if (std::exchange(surface.pending.picture, picture.copy()).isNull()) {
            enterOutputs(resource);
        }
        wl_shm_buffer_end_access(shared);
        wl_buffer_send_release(buffer);
    }
    surface.current = surface.pending;
    for (auto* frame : std::exchange(surface.frames, {})) {
        wl_callback_send_done(frame, 0);
        wl_resource_destroy(frame);
    }
}

void FakeServer::enterOutputs(wl_resource* surface) const {
    for (auto* output : outputs) {
        if (wl_resource_get_client(output) == wl_resource_get_client(surface)) {
            wl_surface_send_enter(surface, output);
        }
    }
}

void FakeServer::setScale(int scale) {
    outputScale = scale;
    for (auto* output : outputs) {
        wl_output_send_scale(output, scale);
        wl_output_send_done(output);
    }
}

void FakeServer::offerKdeBlur() {
    kdeGlobal = offer<[](FakeServer& server, wl_client* client, int version, std::uint32_t id) {
        server.make(client, id, org_kde_kwin_blur_manager_interface, kdeManagerRequests, version);
    }>(org_kde_kwin_blur_manager_interface, 1);
}

void FakeServer::offerEffects() {
    effectsGlobal = offer<[](FakeServer& server, wl_client* client, int version, std::uint32_t id) {
        auto* manager = server.make(client, id, ext_background_effect_manager_v1_interface,
                                    effectManagerRequests, version);
        server.effectManagers.push_back(manager);
        ext_background_effect_manager_v1_send_capabilities(manager, server.capabilities);
    }>(ext_background_effect_manager_v1_interface, 1);
}

} // namespace orvantile::test
