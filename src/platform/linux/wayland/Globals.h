#pragma once

#include "platform/linux/wayland/BlurOffer.h"
#include "platform/linux/wayland/Handle.h"
#include "platform/linux/wayland/WaylandConnection.h"

#include <cstdint>
#include <functional>
#include <map>

namespace orvantile::platform::wayland {

/// What the compositor offers to everybody. Each may be absent, or go and come at run time.
class Globals {
public:
    /// Waits for the list once.
    explicit Globals(WaylandConnection& connection);
    Globals(const Globals&) = delete;
    Globals& operator=(const Globals&) = delete;
    ~Globals() = default;

    /// Whether a panel can be shown.
    [[nodiscard]] bool offersPanels() const;

    Handle<wl_compositor> compositor;
    Handle<wl_shm> memory;
    Handle<zwlr_layer_shell_v1> layers;
    Handle<wp_viewporter> viewports;
    Handle<wp_fractional_scale_manager_v1> fractionalScales;
    Handle<zxdg_output_manager_v1> outputDetails;
    BlurOffer blur;

    /// The outputs by the name in the registry, with the version the compositor speaks.
    [[nodiscard]] const std::map<std::uint32_t, std::uint32_t>& outputs() const { return outputVersions; }

    [[nodiscard]] Handle<wl_output> bindOutput(std::uint32_t name) const;

    [[nodiscard]] bool listsWindows() const { return windowList != 0; }

    /// Begins a list of windows; null where the compositor has none.
    [[nodiscard]] zwlr_foreign_toplevel_manager_v1* bindWindows() const;

    /// Begins with the first seat; null where the compositor has none.
    [[nodiscard]] Handle<wl_seat> bindSeat() const;

    /// Called after an output has come or gone.
    std::function<void()> onOutputsChanged;

private:
    void add(std::uint32_t name, const char* interface, std::uint32_t version);
    void remove(std::uint32_t name);

    Handle<wl_registry> registry;
    std::map<std::uint32_t, std::uint32_t> outputVersions;
    std::uint32_t seatName = 0;
    std::uint32_t windowList = 0;
};

/// Whether the environment names a compositor that can be reached, and one that shows panels.
[[nodiscard]] bool isReachable();
[[nodiscard]] bool offersPanels();

} // namespace orvantile::platform::wayland
