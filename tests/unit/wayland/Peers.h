#pragma once

#include "platform/linux/wayland/WaylandBackdrop.h"
#include "platform/linux/wayland/WaylandPanels.h"
#include "support/VirtualScheduler.h"
#include "support/wayland/FakeCompositor.h"

#include <memory>

namespace orvantile::platform::wayland {

/// The connection to a compositor of one's own, made as the program makes it.
inline std::unique_ptr<WaylandConnection> connectTo(const test::FakeCompositor& compositor) {
    qputenv("WAYLAND_DISPLAY", compositor.display().toLocal8Bit());
    auto connection = WaylandConnection::open();
    qunsetenv("WAYLAND_DISPLAY");
    return connection;
}

/// The peers that the program has on a compositor.
struct Peers {
    explicit Peers(const test::FakeCompositor& compositor) : connection(connectTo(compositor)) {}

    std::unique_ptr<WaylandConnection> connection;
    Globals globals{*connection};
    Outputs outputs{*connection, globals};
    FocusedOutput focused{globals, outputs};
    WaylandScreens screens{outputs, focused};
    WaylandBackdrop backdrop{globals};
    test::VirtualScheduler scheduler;
    WaylandPanels panels{*connection, globals, outputs, scheduler, screens};
};

} // namespace orvantile::platform::wayland
