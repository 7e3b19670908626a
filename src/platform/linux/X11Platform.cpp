#include "platform/linux/X11Platform.h"

#include "platform/linux/a11y/BusMenuModel.h"
#include "platform/linux/desktop/DesktopAppearance.h"
#include "platform/linux/desktop/PermissionPrompt.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/desktop/accessibilitysettings/AccessibilitySettings.h"
#include "platform/linux/helper/ReportFeed.h"
#include "platform/linux/session/LinuxAccessibility.h"
#include "platform/linux/session/LinuxWorkspace.h"
#include "platform/linux/session/ShortcutSource.h"
#include "platform/linux/x11/Compositor.h"
#include "platform/linux/x11/ScreenGrab.h"
#include "platform/linux/x11/ServerLoss.h"
#include "platform/linux/x11/SharedTheme.h"
#include "platform/linux/x11/StartupIdentifier.h"
#include "platform/linux/x11/X11Activation.h"
#include "platform/linux/x11/X11Backdrop.h"
#include "platform/linux/x11/X11Panels.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Session.h"
#include "platform/null/NullPlatform.h"

#include <QCoreApplication>
#include <QTimer>
#include <string>
#include <unistd.h>
#include <utility>

namespace orvantile::platform {
namespace {

using desktop::PermissionPrompt;

/// What the peers share.
struct Desktop {
    Desktop(std::unique_ptr<x11::XConnection> connection_, Scheduler& scheduler)
        : connection(std::move(connection_)),
          session(*connection),
          compositor(*connection),
          theme(*connection),
          menus(a11y::makeBusMenuModel([this] { session.drain(); })),
          source(session, *menus, getpid()),
          prompt(scheduler, {.obstacle = [this] { return obstacle(); }, .turnOn = [this] { turnOn(); }}),
          settings([this](const auto& receiver) { askToken(receiver); }) {}

    [[nodiscard]] PermissionPrompt::Obstacle obstacle() const {
        if (!session.hearsKeys()) {
            return PermissionPrompt::Obstacle::noKeys;
        }
        return menus->isAvailable() ? PermissionPrompt::Obstacle::none
                                    : PermissionPrompt::Obstacle::accessibilityOff;
    }

    void turnOn() {
        menus->accessibilityBus().setEnabled(true);
        publishBus();
        if (menus->accessibilityBus().address().empty()) {
            constexpr int busStartMilliseconds = 2000;
            QTimer::singleShot(busStartMilliseconds, &context, [this] { publishBus(); });
        }
    }

    /// Some toolkits find the bus by nothing but this property of the root window.
    void publishBus() {
        const std::string address = menus->accessibilityBus().address();
        const auto property = connection->atoms().accessibilityBus;
        connection->ask<xcb_get_property_reply_t>(
            xcb_get_property(connection->get(), 0, connection->root(), property, XCB_GET_PROPERTY_TYPE_ANY, 0,
                             1),
            [this, property, address](const auto* reply) {
                if (!address.empty() && reply != nullptr && reply->type == XCB_ATOM_NONE) {
                    xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, connection->root(),
                                        property, XCB_ATOM_STRING, 8,
                                        static_cast<std::uint32_t>(address.size()), address.data());
                }
            });
    }

    /// What was done last in the window with the focus, which is where settings are asked for.
    void askToken(const desktop::AccessibilitySettings::TokenReceiver& receiver) {
        const auto window = session.activeWindow();
        if (!window) {
            receiver({});
            return;
        }
        x11::askStartupIdentifier(*connection, static_cast<xcb_window_t>(window->handle), receiver);
    }

    std::unique_ptr<x11::XConnection> connection;
    x11::X11Session session;
    x11::Compositor compositor;
    x11::SharedTheme theme;
    std::unique_ptr<a11y::BusMenuModel> menus;
    session::ShortcutSource source;
    helper::ReportFeed reports{session, source};
    PermissionPrompt prompt;
    desktop::AccessibilitySettings settings;
    std::unique_ptr<x11::ScreenGrab> grab;
    QObject context;
};

} // namespace

std::unique_ptr<Platform> makeX11Platform() {
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

    const auto desktop = std::make_shared<Desktop>(std::move(connection), *platform->scheduler);
    auto& x = *desktop->connection;
    auto screens = std::make_unique<x11::X11Screens>(x, desktop->session);
    desktop->grab = std::make_unique<x11::ScreenGrab>(x, *screens);
    platform->backdrop = std::make_unique<x11::X11Backdrop>(*screens, desktop->compositor, *desktop->grab);
    platform->panels = std::make_unique<x11::X11Panels>(x, *platform->scheduler, *screens,
                                                        desktop->compositor, *desktop->grab);
    platform->activation = std::make_unique<x11::X11Activation>(x);
    platform->screens = std::move(screens);
    platform->workspace = std::make_unique<session::LinuxWorkspace>(
        desktop->source, [&settings = desktop->settings] { settings.open(); });
    platform->accessibility = std::make_unique<session::LinuxAccessibility>(
        desktop->source, desktop->session, *desktop->menus, [&prompt = desktop->prompt] { prompt.ask(); });
    platform->foundation = desktop;

    desktop->session.start();
    x.synchronize();
    platform->appearance = std::make_unique<desktop::DesktopAppearance>(
        desktop::DesktopAppearance::Sources::ofSession(), &desktop->theme);
    return platform;
}

} // namespace orvantile::platform
