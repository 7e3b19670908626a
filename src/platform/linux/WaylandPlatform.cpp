#include "platform/linux/WaylandPlatform.h"

#include "platform/linux/DesktopShortcuts.h"
#include "platform/linux/X11Platform.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/wayland/CompositorLoss.h"
#include "platform/linux/wayland/WaylandBackdrop.h"
#include "platform/linux/wayland/WaylandPanels.h"
#include "platform/linux/wayland/WaylandSession.h"
#include "platform/null/NullPlatform.h"

#include <QCoreApplication>
#include <optional>
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
    std::unique_ptr<DesktopShortcuts> shortcuts;
};

/// The compositor that runs the X server which the program uses.
struct Compositor {
    std::unique_ptr<wayland::WaylandConnection> connection = wayland::WaylandConnection::open();
    std::optional<wayland::Globals> offers;
};

class HostSession final : private Compositor, public wayland::WaylandSession {
public:
    explicit HostSession(Scheduler& scheduler_)
        : WaylandSession(scheduler_, connection ? &offers.emplace(*connection) : nullptr) {}

    void start() override {
        WaylandSession::start();
        if (connection) {
            connection->flush();
        }
    }
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
    desktop->shortcuts = std::make_unique<DesktopShortcuts>(
        x11::XConnection::open(),
        std::make_unique<wayland::WaylandSession>(*platform->scheduler, &desktop->globals),
        *platform->scheduler);
    desktop->shortcuts->provide(*platform);
    desktop->shortcuts->start();
    desktop->connection->flush();
    platform->foundation = desktop;
    return platform;
}

std::unique_ptr<Platform> makeXwaylandPlatform() {
    return makeX11Platform([](Scheduler& scheduler) { return std::make_unique<HostSession>(scheduler); });
}

} // namespace orvantile::platform
