#include "platform/linux/wayland/Globals.h"

#include <algorithm>
#include <string_view>

namespace orvantile::platform::wayland {
namespace {

constexpr std::uint32_t newestCompositor = 4; // tells damage in device pixels

Globals& self(void* data) {
    return *static_cast<Globals*>(data);
}

/// Binds the global to `handle` when it is of that interface, in a version no newer than `newest`.
template <typename HandleType>
bool bindTo(HandleType& handle, wl_registry* registry, std::uint32_t name, const char* offered,
            const wl_interface& interface, std::uint32_t version, std::uint32_t newest) {
    if (std::string_view(offered) != interface.name) {
        return false;
    }
    handle.reset(static_cast<typename HandleType::pointer>(
        wl_registry_bind(registry, name, &interface, std::min(version, newest))));
    return true;
}

} // namespace

bool Globals::offersPanels() const {
    return compositor && wl_compositor_get_version(compositor.get()) >= newestCompositor && memory && layers;
}

Globals::Globals(WaylandConnection& connection) : registry(wl_display_get_registry(connection.get())) {
    static constexpr wl_registry_listener listener{
        .global = [](void* data, wl_registry*, std::uint32_t name, const char* interface,
                     std::uint32_t version) { self(data).add(name, interface, version); },
        .global_remove = [](void* data, wl_registry*, std::uint32_t name) { self(data).remove(name); }};
    wl_registry_add_listener(registry.get(), &listener, this);
    connection.synchronize();
}

void Globals::add(std::uint32_t name, const char* interface, std::uint32_t version) {
    // The newest versions whose events are handled here.
    constexpr std::uint32_t newestLayers = 2;
    constexpr std::uint32_t newestOutputDetails = 3;
    const auto bind = [&](auto& handle, const wl_interface& wanted, std::uint32_t newest) {
        return bindTo(handle, registry.get(), name, interface, wanted, version, newest);
    };
    if (bind(compositor, wl_compositor_interface, newestCompositor) || bind(memory, wl_shm_interface, 1) ||
        bind(layers, zwlr_layer_shell_v1_interface, newestLayers) ||
        bind(viewports, wp_viewporter_interface, 1) ||
        bind(fractionalScales, wp_fractional_scale_manager_v1_interface, 1) ||
        bind(outputDetails, zxdg_output_manager_v1_interface, newestOutputDetails)) {
        return;
    }
    if (blur.add(*registry, name, interface)) {
        return;
    }
    if (std::string_view(interface) == wl_seat_interface.name) {
        seatName = seatName == 0 ? name : seatName;
    } else if (std::string_view(interface) == zwlr_foreign_toplevel_manager_v1_interface.name) {
        windowList = name;
    } else if (std::string_view(interface) == wl_output_interface.name) {
        outputVersions[name] = version;
        if (onOutputsChanged) {
            onOutputsChanged();
        }
    }
}

void Globals::remove(std::uint32_t name) {
    if (name == seatName) {
        seatName = 0;
    } else if (name == windowList) {
        windowList = 0;
    } else if (!blur.remove(name) && outputVersions.erase(name) > 0 && onOutputsChanged) {
        onOutputsChanged();
    }
}

Handle<wl_output> Globals::bindOutput(std::uint32_t name) const {
    constexpr std::uint32_t newest = 3;
    return Handle<wl_output>(static_cast<wl_output*>(wl_registry_bind(
        registry.get(), name, &wl_output_interface, std::min(outputVersions.at(name), newest))));
}

zwlr_foreign_toplevel_manager_v1* Globals::bindWindows() const {
    if (windowList == 0) {
        return nullptr;
    }
    return static_cast<zwlr_foreign_toplevel_manager_v1*>(
        wl_registry_bind(registry.get(), windowList, &zwlr_foreign_toplevel_manager_v1_interface, 1));
}

Handle<wl_seat> Globals::bindSeat() const {
    return Handle<wl_seat>(seatName == 0 ? nullptr
                                         : static_cast<wl_seat*>(wl_registry_bind(registry.get(), seatName,
                                                                                  &wl_seat_interface, 1)));
}

bool isReachable() {
    return WaylandConnection::open() != nullptr;
}

bool offersPanels() {
    const auto connection = WaylandConnection::open();
    return connection && Globals(*connection).offersPanels();
}

} // namespace orvantile::platform::wayland
