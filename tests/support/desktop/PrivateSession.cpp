#include "support/desktop/PrivateSession.h"

#include "support/desktop/SessionBusCalls.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <algorithm>
#include <csignal>
#include <stdexcept>
#include <sys/syscall.h>
#include <unistd.h>
#include <xcb/xfixes.h>

namespace orvantile::test {
namespace {

const auto sessionMark = QStringLiteral("ORVANTILE_TEST_SESSION");

[[noreturn]] void fail(const QString& what) {
    throw std::runtime_error(what.toStdString());
}

void makeDirectory(const QString& path) {
    if (!QDir().mkpath(path)) {
        fail(u"cannot make " % path);
    }
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

/// Ends a process that is nobody's child, and waits for its end.
void endProcess(pid_t process) {
    const FileDescriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    if (handle.get() >= 0) {
        ::kill(process, SIGKILL);
        (void)awaitReadable(handle.get(), QDeadlineTimer(patience));
    }
}

} // namespace

PrivateSession::PrivateSession(SessionOptions options)
    : directory(QDir::tempPath() + QStringLiteral("/orvantile-XXXXXX")) {
    prepareDirectories();
    prepareLocale(options.locale);
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
    sessionBus.reset();
    server.reset();
    endStragglers();
}

void PrivateSession::setVariable(const QString& name, const QString& value) {
    variables.insert(name, value);
}

void PrivateSession::enter() const {
    for (const QString& name : variables.keys()) {
        qputenv(name.toLatin1().constData(), variables.value(name).toLocal8Bit());
    }
    qunsetenv("WAYLAND_DISPLAY");
}

std::unique_ptr<ChildProcess> PrivateSession::start(const QString& program,
                                                    const QStringList& arguments) const {
    return std::make_unique<ChildProcess>(
        Command{program, arguments, variables, directory.filePath(QStringLiteral("output"))});
}

QString PrivateSession::writeFile(const QString& relativePath, const QByteArray& contents) const {
    const QString path = home() % u'/' % relativePath;
    makeDirectory(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        fail(u"cannot write " % path);
    }
    return path;
}

void PrivateSession::startWindowManager(WindowManager which) {
    const XConnection x(displayName);
    x.select(x.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    switch (which) {
    case WindowManager::none:
        return;
    case WindowManager::openbox:
        windowManager = start(QStringLiteral("openbox"));
        break;
    case WindowManager::xfwm4:
        windowManager = start(QStringLiteral("xfwm4"), {QStringLiteral("--compositor=off")});
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
    compositor = start(QStringLiteral("picom"), {QStringLiteral("--config"), QStringLiteral("/dev/null"),
                                                 QStringLiteral("--backend"), QStringLiteral("xrender")});
    if (!x.await([&x] { return hasCompositor(x); }, {}, QDeadlineTimer(patience))) {
        fail(u"picom did not start: " % QString::fromUtf8(compositor->standardError()));
    }
}

void PrivateSession::stopCompositor() {
    compositor.reset();
}

void PrivateSession::startSessionBus() {
    sessionBus =
        start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
               QStringLiteral("--address=unix:path=") % runtimeDirectory() % u"/bus",
               QStringLiteral("--print-address")});
    const auto address = sessionBus->awaitLine();
    if (!address) {
        fail(u"the session bus did not start: " % QString::fromUtf8(sessionBus->standardError()));
    }
    setVariable(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromUtf8(*address));
}

void PrivateSession::stopSessionBus() {
    sessionBus.reset();
    QFile::remove(runtimeDirectory() % u"/bus");
}

void PrivateSession::startAccessibility() {
    const SessionBusCalls bus(sessionBusAddress());
    if (bus.accessibilityBusAddress().isEmpty()) {
        fail(QStringLiteral("the accessibility bus did not start; is at-spi2-core installed?"));
    }
    bus.setAccessibilityEnabled(true);
    if (!bus.accessibilityEnabled()) {
        fail(QStringLiteral("accessibility cannot be switched on"));
    }
}

void PrivateSession::stopAccessibility() {
    const SessionBusCalls session(sessionBusAddress());
    const pid_t launcher = session.ownerOf(QStringLiteral("org.a11y.Bus"));
    if (launcher == 0) {
        return;
    }
    const pid_t daemon = SessionBusCalls(session.accessibilityBusAddress()).daemon();
    endProcess(launcher);
    endProcess(daemon);
}

QString PrivateSession::accessibilityBusAddress() const {
    return SessionBusCalls(sessionBusAddress()).accessibilityBusAddress();
}

bool PrivateSession::accessibilityEnabled() const {
    return SessionBusCalls(sessionBusAddress()).accessibilityEnabled();
}

void PrivateSession::setAccessibilityEnabled(bool enabled) const {
    SessionBusCalls(sessionBusAddress()).setAccessibilityEnabled(enabled);
}

QString PrivateSession::sessionBusAddress() const {
    return variables.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
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

void PrivateSession::prepareDirectories() {
    if (!directory.isValid()) {
        fail(u"no temporary directory: " % directory.errorString());
    }
    for (const char* name : {"home/.config", "home/.local/share", "home/.cache", "run", "output"}) {
        makeDirectory(directory.filePath(QString::fromLatin1(name)));
    }
    QFile::setPermissions(runtimeDirectory(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const auto own = QProcessEnvironment::systemEnvironment();
    for (const char* name :
         {"PATH", "USER", "LOGNAME", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "LLVM_PROFILE_FILE"}) {
        if (const auto key = QString::fromLatin1(name); own.contains(key)) {
            setVariable(key, own.value(key));
        }
    }
    setVariable(QStringLiteral("HOME"), home());
    setVariable(QStringLiteral("XDG_CONFIG_HOME"), configuration());
    setVariable(QStringLiteral("XDG_DATA_HOME"), home() + QStringLiteral("/.local/share"));
    setVariable(QStringLiteral("XDG_CACHE_HOME"), home() + QStringLiteral("/.cache"));
    setVariable(QStringLiteral("XDG_RUNTIME_DIR"), runtimeDirectory());
    setVariable(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("x11"));
    setVariable(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
    setVariable(QStringLiteral("KWIN_COMPOSE"), QStringLiteral("N"));
    setVariable(sessionMark, QUuid::createUuid().toString(QUuid::WithoutBraces));
}

void PrivateSession::prepareLocale(const QString& locale) {
    setVariable(QStringLiteral("LANG"), locale);
    if (locale.startsWith(u"C.")) {
        return;
    }
    const QString path = directory.filePath(QStringLiteral("locales"));
    makeDirectory(path);
    const auto compiler = start(QStringLiteral("localedef"),
                                {QStringLiteral("-i"), locale.section(u'.', 0, 0), QStringLiteral("-f"),
                                 QStringLiteral("UTF-8"), path % u'/' % locale});
    if (compiler->awaitExit(QDeadlineTimer(patience * 2)) != 0) {
        fail(u"the locale " % locale % u" cannot be made: " % QString::fromUtf8(compiler->standardError()));
    }
    setVariable(QStringLiteral("LOCPATH"), path);
}

void PrivateSession::startServer(const SessionOptions& options) {
    const QString screen =
        QString::number(options.screen.width()) % u'x' % QString::number(options.screen.height()) % u"x24";
    server = start(QStringLiteral("Xvfb"),
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

void PrivateSession::endStragglers() const {
    // Services that the buses have started are nobody's children; the environment tells whose they are.
    const QByteArray mark = (sessionMark % u'=' % variables.value(sessionMark)).toLatin1();
    for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isProcess = false;
        const pid_t process = entry.toInt(&isProcess);
        QFile environ(u"/proc/" % entry % u"/environ");
        if (isProcess && process != ::getpid() && environ.open(QIODevice::ReadOnly) &&
            environ.readAll().split('\0').contains(mark)) {
            endProcess(process);
        }
    }
}

} // namespace orvantile::test
