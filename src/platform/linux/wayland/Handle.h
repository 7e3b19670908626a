#pragma once

#include <ext-background-effect-v1.h>
#include <fractional-scale-v1.h>
#include <kde-blur.h>
#include <memory>
#include <viewporter.h>
#include <wayland-client-protocol.h>
#include <wlr-foreign-toplevel-management-unstable-v1.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <xdg-output-unstable-v1.h>

namespace orvantile::platform::wayland {

/// Gives up an object of the protocol, with the request that its kind has for that.
struct Destroy {
    void operator()(wl_buffer* object) const { wl_buffer_destroy(object); }

    void operator()(wl_callback* object) const { wl_callback_destroy(object); }

    void operator()(wl_compositor* object) const { wl_compositor_destroy(object); }

    void operator()(wl_keyboard* object) const { wl_keyboard_destroy(object); }

    void operator()(wl_output* object) const { wl_output_destroy(object); }

    void operator()(wl_region* object) const { wl_region_destroy(object); }

    void operator()(wl_registry* object) const { wl_registry_destroy(object); }

    void operator()(wl_seat* object) const { wl_seat_destroy(object); }

    void operator()(wl_shm* object) const { wl_shm_destroy(object); }

    void operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }

    void operator()(wl_surface* object) const { wl_surface_destroy(object); }

    void operator()(wp_fractional_scale_manager_v1* object) const {
        wp_fractional_scale_manager_v1_destroy(object);
    }

    void operator()(wp_fractional_scale_v1* object) const { wp_fractional_scale_v1_destroy(object); }

    void operator()(wp_viewport* object) const { wp_viewport_destroy(object); }

    void operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }

    void operator()(zxdg_output_manager_v1* object) const { zxdg_output_manager_v1_destroy(object); }

    void operator()(zxdg_output_v1* object) const { zxdg_output_v1_destroy(object); }

    void operator()(ext_background_effect_manager_v1* object) const {
        ext_background_effect_manager_v1_destroy(object);
    }

    void operator()(ext_background_effect_surface_v1* object) const {
        ext_background_effect_surface_v1_destroy(object);
    }

    void operator()(org_kde_kwin_blur* object) const { org_kde_kwin_blur_release(object); }

    void operator()(org_kde_kwin_blur_manager* object) const { org_kde_kwin_blur_manager_destroy(object); }

    void operator()(zwlr_foreign_toplevel_handle_v1* object) const {
        zwlr_foreign_toplevel_handle_v1_destroy(object);
    }

    void operator()(zwlr_foreign_toplevel_manager_v1* object) const {
        zwlr_foreign_toplevel_manager_v1_destroy(object);
    }

    void operator()(zwlr_layer_shell_v1* object) const { zwlr_layer_shell_v1_destroy(object); }

    void operator()(zwlr_layer_surface_v1* object) const { zwlr_layer_surface_v1_destroy(object); }
};

/// Owns an object of the protocol. Must not outlive the connection.
template <typename Object>
using Handle = std::unique_ptr<Object, Destroy>;

} // namespace orvantile::platform::wayland
