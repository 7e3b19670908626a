#include "platform/linux/X11Platform.h"

#include "platform/linux/DesktopShortcuts.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/x11/Compositor.h"
#include "platform/linux/x11/ScreenGrab.h"
#include "platform/linux/x11/ServerLoss.h"
#include "platform/linux/x11/SharedTheme.h"
#include "platform/linux/x11/X11Activation.h"
#include "platform/linux/x11/X11Backdrop.h"
#include "platform/linux/x11/X11Panels.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/null/NullPlatform.h"

#include <QCoreApplication>
#include <utility>

namespace orvantile::platform {
namespace {

/// What the peers share.
struct Desktop {
    Desktop(std::unique_ptr<x11::XConnection> connection, std::unique_ptr<session::DesktopSession> native,
            Scheduler& scheduler)
        : shortcuts(std::move(connection), std::move(native), scheduler),
          compositor(*shortcuts.connection()),
          theme(*shortcuts.connection()) {}

    DesktopShortcuts shortcuts;
    x11::Compositor compositor;
    x11::SharedTheme theme;
    std::unique_ptr<x11::ScreenGrab> grab;
};

} // namespace

std::unique_ptr<Platform> makeX11Platform(const NativeSession& native) {
    auto platform = makeNullPlatform();
    platform->scheduler = std::make_unique<desktop::QtScheduler>();
    auto connection = x11::XConnection::open();
    if (!connection) {
        platform->appearance = std::make_unique<desktop::DesktopAppearance>();
        return platform;
    }
    x11::watchServer(xcb_get_file_descriptor(connection->get()));
    connection->onClosed = [] { QCoreApplication::exit(EXIT_SUCCESS); };
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                     QCoreApplication::instance(), [&connection = *connection] {
                         if (connection.isOpen()) {
                             x11::watchServer(-1);
                         }
                     });

    const auto desktop = std::make_shared<Desktop>(
        std::move(connection), native ? native(*platform->scheduler) : nullptr, *platform->scheduler);
    auto& x = *desktop->shortcuts.connection();
    auto screens = std::make_unique<x11::X11Screens>(x, *desktop->shortcuts.xSession());
    desktop->grab = std::make_unique<x11::ScreenGrab>(x, *screens);
    platform->backdrop = std::make_unique<x11::X11Backdrop>(*screens, desktop->compositor, *desktop->grab);
    platform->panels = std::make_unique<x11::X11Panels>(x, *platform->scheduler, *screens,
                                                        desktop->compositor, *desktop->grab);
    platform->activation = std::make_unique<x11::X11Activation>(x);
    platform->screens = std::move(screens);
    desktop->shortcuts.provide(*platform);
    platform->foundation = desktop;

    desktop->shortcuts.start();
    platform->appearance = std::make_unique<desktop::DesktopAppearance>(
        desktop::DesktopAppearance::Sources::ofSession(), &desktop->theme);
    return platform;
}

} // namespace orvantile::platform
