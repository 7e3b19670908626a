#include "platform/linux/WaylandPlatform.h"

#include "platform/linux/X11Shortcuts.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/wayland/CompositorLoss.h"
#include "platform/linux/wayland/WaylandBackdrop.h"
#include "platform/linux/wayland/WaylandPanels.h"
#include "platform/null/NullPlatform.h"

#include <QCoreApplication>
#include <utility>

namespace orvantile::platform {
namespace {

/// What the peers share.
struct Desktop {
    explicit Desktop(std::unique_ptr<wayland::WaylandConnection> connection_)
        : connection(std::move(connection_)),
          globals(*connection),
          outputs(*connection, globals),
          focused(globals, outputs) {}

    std::unique_ptr<wayland::WaylandConnection> connection;
    wayland::Globals globals;
    wayland::Outputs outputs;
    wayland::FocusedOutput focused;
    std::unique_ptr<X11Shortcuts> shortcuts; ///< of programs that run on X
};

} // namespace

std::unique_ptr<Platform> makeWaylandPlatform() {
    auto platform = makeNullPlatform();
    platform->scheduler = std::make_unique<desktop::QtScheduler>();
    platform->appearance = std::make_unique<desktop::DesktopAppearance>();
    auto connection = wayland::WaylandConnection::open();
    if (!connection) {
        return platform;
    }
    wayland::watchCompositor(connection->descriptor());
    connection->onGone = [] { QCoreApplication::exit(EXIT_SUCCESS); };

    const auto desktop = std::make_shared<Desktop>(std::move(connection));
    auto screens = std::make_unique<wayland::WaylandScreens>(desktop->outputs, desktop->focused);
    if (desktop->globals.offersPanels()) {
        platform->panels = std::make_unique<wayland::WaylandPanels>(
            *desktop->connection, desktop->globals, desktop->outputs, *platform->scheduler, *screens);
    }
    platform->backdrop = std::make_unique<wayland::WaylandBackdrop>(desktop->globals);
    platform->screens = std::move(screens);
    if (auto x = x11::XConnection::open()) {
        desktop->shortcuts = std::make_unique<X11Shortcuts>(std::move(x), *platform->scheduler);
        desktop->shortcuts->services.provide(*platform);
        desktop->shortcuts->session.start();
        desktop->shortcuts->connection->synchronize();
    }
    platform->foundation = desktop;
    return platform;
}

} // namespace orvantile::platform
