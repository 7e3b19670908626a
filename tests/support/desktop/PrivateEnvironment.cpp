#include "support/desktop/PrivateEnvironment.h"

#include "support/desktop/SessionBusCalls.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <csignal>
#include <stdexcept>
#include <sys/syscall.h>
#include <unistd.h>

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

/// Ends a process that is nobody's child, and waits for its end.
void endProcess(pid_t process) {
    const FileDescriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
    if (handle.get() >= 0) {
        ::kill(process, SIGKILL);
        (void)awaitReadable(handle.get(), QDeadlineTimer(patience));
    }
}

} // namespace

PrivateEnvironment::PrivateEnvironment(const QString& locale)
    : directory(QDir::tempPath() + QStringLiteral("/orvantile-XXXXXX")) {
    prepareDirectories();
    prepareLocale(locale);
}

PrivateEnvironment::~PrivateEnvironment() {
    stopSessionBus();
    endStragglers();
}

void PrivateEnvironment::setVariable(const QString& name, const QString& value) {
    variables.insert(name, value);
}

void PrivateEnvironment::enter() const {
    for (const QString& name : variables.keys()) {
        qputenv(name.toLatin1().constData(), variables.value(name).toLocal8Bit());
    }
    for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        if (!variables.contains(QString::fromLatin1(display))) {
            qunsetenv(display);
        }
    }
}

std::unique_ptr<ChildProcess> PrivateEnvironment::start(const QString& program,
                                                        const QStringList& arguments) const {
    return std::make_unique<ChildProcess>(
        Command{program, arguments, variables, directory.filePath(QStringLiteral("output"))});
}

QString PrivateEnvironment::writeFile(const QString& relativePath, const QByteArray& contents) const {
    const QString path = home() % u'/' % relativePath;
    makeDirectory(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        fail(u"cannot write " % path);
    }
    return path;
}

void PrivateEnvironment::startSessionBus() {
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

void PrivateEnvironment::stopSessionBus() {
    sessionBus.reset();
    QFile::remove(runtimeDirectory() % u"/bus");
}

void PrivateEnvironment::startAccessibility() {
    const SessionBusCalls bus(sessionBusAddress());
    if (bus.accessibilityBusAddress().isEmpty()) {
        fail(QStringLiteral("the accessibility bus did not start; is at-spi2-core installed?"));
    }
    bus.setAccessibilityEnabled(true);
    if (!bus.accessibilityEnabled()) {
        fail(QStringLiteral("accessibility cannot be switched on"));
    }
}

void PrivateEnvironment::stopAccessibility() {
    const SessionBusCalls session(sessionBusAddress());
    const pid_t launcher = session.ownerOf(QStringLiteral("org.a11y.Bus"));
    if (launcher == 0) {
        return;
    }
    const pid_t daemon = SessionBusCalls(session.accessibilityBusAddress()).daemon();
    endProcess(launcher);
    endProcess(daemon);
}

QString PrivateEnvironment::accessibilityBusAddress() const {
    return SessionBusCalls(sessionBusAddress()).accessibilityBusAddress();
}

bool PrivateEnvironment::accessibilityEnabled() const {
    return SessionBusCalls(sessionBusAddress()).accessibilityEnabled();
}

void PrivateEnvironment::setAccessibilityEnabled(bool enabled) const {
    SessionBusCalls(sessionBusAddress()).setAccessibilityEnabled(enabled);
}

QString PrivateEnvironment::sessionBusAddress() const {
    return variables.value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
}

void PrivateEnvironment::prepareDirectories() {
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
    setVariable(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("memory"));
    setVariable(sessionMark, QUuid::createUuid().toString(QUuid::WithoutBraces));
}

void PrivateEnvironment::prepareLocale(const QString& locale) {
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

void PrivateEnvironment::endStragglers() const {
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
