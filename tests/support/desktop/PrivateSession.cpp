#include "support/desktop/PrivateSession.h"

#include <algorithm>
#include <stdexcept>
#include <xcb/xfixes.h>

namespace orvantile::test {
namespace {

[[noreturn]] void fail(const QString& what) {
    throw std::runtime_error(what.toStdString());
}

bool hasWindowManager(const XConnection& x) {
    const auto check = x.numbers(x.root(), "_NET_SUPPORTING_WM_CHECK");
    return !check.empty() && !x.numbers(check.front(), "_NET_SUPPORTING_WM_CHECK").empty();
}

/// Window managers announce themselves before they listen, and a window that comes in between is lost on
/// them: shows a window again and again until it is managed.
bool awaitManaging(const XConnection& x, const QDeadlineTimer& deadline) {
    const auto probe = xcb_generate_id(x.get());
    xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, probe, x.root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    x.select(x.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    const auto isManaged = [&] {
        const auto managed = x.numbers(x.root(), "_NET_CLIENT_LIST");
        return std::ranges::find(managed, probe) != managed.end();
    };
    constexpr std::chrono::milliseconds attempt{100};
    bool managed = false;
    while (!managed && !deadline.hasExpired()) {
        xcb_map_window(x.get(), probe);
        x.synchronize();
        managed = x.await(isManaged, {}, QDeadlineTimer(attempt));
        if (!managed) {
            xcb_unmap_window(x.get(), probe);
        }
    }
    xcb_destroy_window(x.get(), probe);
    x.synchronize();
    return managed && x.await([&] { return !isManaged(); }, {}, deadline);
}

bool hasCompositor(const XConnection& x) {
    const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        x.get(), xcb_get_selection_owner(x.get(), x.atom("_NET_WM_CM_S0")), nullptr));
    return reply && reply->owner != XCB_NONE;
}

} // namespace

PrivateSession::PrivateSession(SessionOptions options) : PrivateEnvironment(options.locale) {
    setVariable(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("x11"));
    setVariable(QStringLiteral("KWIN_COMPOSE"), QStringLiteral("N"));
    startServer(options);
    setKeyboardLayout(options.keyboardLayout, options.keyboardOptions);
    if (options.sessionBus) {
        startSessionBus();
        if (options.accessibility) {
            startAccessibility();
        }
    }
    startWindowManager(options.windowManager);
    if (options.compositor) {
        startCompositor();
    }
}

PrivateSession::~PrivateSession() {
    compositor.reset();
    windowManager.reset();
    stopSessionBus();
    server.reset();
}

void PrivateSession::startWindowManager(WindowManager which) {
    const XConnection x(displayName);
    x.select(x.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    compositesItself = which == WindowManager::xfwm4Compositing;
    switch (which) {
    case WindowManager::none:
        return;
    case WindowManager::openbox:
        windowManager = start(QStringLiteral("openbox"));
        break;
    case WindowManager::xfwm4:
        windowManager = start(QStringLiteral("xfwm4"), {QStringLiteral("--compositor=off")});
        break;
    case WindowManager::xfwm4Compositing:
        setOwnCompositing(false);
        windowManager = start(QStringLiteral("xfwm4"));
        break;
    case WindowManager::kwin:
        windowManager = start(QStringLiteral("kwin_x11"), {QStringLiteral("--no-kactivities")});
        break;
    }
    if (!x.await([&x] { return hasWindowManager(x); }, {}, QDeadlineTimer(patience)) ||
        !awaitManaging(x, QDeadlineTimer(patience))) {
        fail(u"the window manager did not start: " % QString::fromUtf8(windowManager->standardError()));
    }
}

void PrivateSession::stopWindowManager() {
    windowManager.reset();
}

void PrivateSession::startCompositor() {
    const XConnection x(displayName);
    const XReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(x.get(), xcb_xfixes_query_version(x.get(), 5, 0), nullptr));
    xcb_xfixes_select_selection_input(x.get(), x.root(), x.atom("_NET_WM_CM_S0"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    if (compositesItself) {
        setOwnCompositing(true);
    } else {
        compositor = start(QStringLiteral("picom"), {QStringLiteral("--config"), QStringLiteral("/dev/null"),
                                                     QStringLiteral("--backend"), QStringLiteral("xrender")});
    }
    if (!x.await([&x] { return hasCompositor(x); }, {}, QDeadlineTimer(patience))) {
        fail(u"the compositor did not start: " %
             QString::fromUtf8((compositesItself ? windowManager : compositor)->standardError()));
    }
}

void PrivateSession::stopCompositor() {
    compositor.reset();
    if (compositesItself) {
        setOwnCompositing(false);
    }
}

void PrivateSession::setOwnCompositing(bool enabled) const {
    const auto query =
        start(QStringLiteral("xfconf-query"),
              {QStringLiteral("--channel"), QStringLiteral("xfwm4"), QStringLiteral("--property"),
               QStringLiteral("/general/use_compositing"), QStringLiteral("--create"),
               QStringLiteral("--type"), QStringLiteral("bool"), QStringLiteral("--set"),
               enabled ? QStringLiteral("true") : QStringLiteral("false")});
    if (query->awaitExit() != 0) {
        fail(u"xfconf-query failed: " % QString::fromUtf8(query->standardError()));
    }
}

void PrivateSession::setKeyboardLayout(const QString& layout, const QString& options) const {
    QStringList arguments{QStringLiteral("-layout"), layout, QStringLiteral("-option"), QString()};
    if (!options.isEmpty()) {
        arguments << QStringLiteral("-option") << options;
    }
    const auto setter = start(QStringLiteral("setxkbmap"), arguments);
    if (setter->awaitExit() != 0) {
        fail(u"setxkbmap failed: " % QString::fromUtf8(setter->standardError()));
    }
}

void PrivateSession::stopServer() {
    server.reset();
}

std::unique_ptr<ChildProcess> PrivateSession::startServerWithOutputs(const SessionOptions& options) const {
    const auto file = writeFile(QStringLiteral("server.conf"), R"(
Section "Device"
    Identifier "device"
    Driver "dummy"
    VideoRam 128000
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5-1000
    VertRefresh 5-200
    Modeline "1280x800" 83.5 1280 1352 1480 1680 800 803 809 831
    Modeline "800x1280" 83.5 800 852 980 1180 1280 1283 1289 1311
EndSection
Section "Screen"
    Identifier "screen"
    Device "device"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "1280x800" "800x1280"
    EndSubSection
EndSection
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AllowMouseOpenFail" "true"
EndSection
)");
    return start(QStringLiteral("Xorg"),
                 QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-config"),
                             file, QStringLiteral("-logfile"), home() + QStringLiteral("/server.log"),
                             QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-noreset"),
                             QStringLiteral("-novtswitch"), QStringLiteral("-sharevts")} +
                     options.serverArguments);
}

void PrivateSession::startServer(const SessionOptions& options) {
    const QString screen =
        QString::number(options.screen.width()) % u'x' % QString::number(options.screen.height()) % u"x24";
    server =
        options.outputs
            ? startServerWithOutputs(options)
            : start(QStringLiteral("Xvfb"),
                    QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                                QStringLiteral("0"), screen, QStringLiteral("-nolisten"),
                                QStringLiteral("tcp"), QStringLiteral("-noreset")} +
                        options.serverArguments);
    const auto number = server->awaitLine();
    if (!number) {
        fail(u"the X server did not start: " % QString::fromUtf8(server->standardError()));
    }
    displayName = u':' + QString::fromLatin1(*number).trimmed();
    setVariable(QStringLiteral("DISPLAY"), displayName);
}

} // namespace orvantile::test
