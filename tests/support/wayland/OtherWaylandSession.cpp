#include "support/wayland/OtherWaylandSession.h"

#include <QFile>
#include <QStandardPaths>
#include <csignal>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const QString display = u"wayland-test"_s;

[[noreturn]] void fail(const QString& what) {
    throw std::runtime_error(what.toStdString());
}

} // namespace

OtherWaylandSession::OtherWaylandSession(Compositor kind) : PrivateEnvironment(u"C.UTF-8"_s) {
    setVariable(u"XDG_SESSION_TYPE"_s, u"wayland"_s);
    startSessionBus();
    if (kind == Compositor::weston) {
        startWeston();
    } else {
        startKWin(kind == Compositor::kwinWithEffects);
    }
    setVariable(u"WAYLAND_DISPLAY"_s, display);
    startAccessibility();
}

OtherWaylandSession::~OtherWaylandSession() {
    compositor.reset();
    stopSessionBus();
}

void OtherWaylandSession::startWeston() {
    // What it logs is all that tells where its X server listens.
    const auto command =
        u"exec weston --backend=headless-backend.so --socket=\"$0\" --width=1280 --height=800 "
        "--idle-time=0 --xwayland 2>&1"_s;
    compositor = start(u"sh"_s, {u"-c"_s, command, display});
    awaitServer("xserver listening on display ");
}

void OtherWaylandSession::startKWin(bool effects) {
    // The installed program may raise its priority, which containers refuse to grant; a copy may not.
    const auto installed = QStandardPaths::findExecutable(u"kwin_wayland"_s);
    const QString copy = home() + u"/kwin_wayland"_s;
    if (installed.isEmpty() || !QFile::copy(installed, copy)) {
        fail(u"kwin_wayland is missing"_s);
    }
    setVariable(u"QT_QUICK_BACKEND"_s, u"software"_s);
    setVariable(u"KWIN_COMPOSE"_s, effects ? u"O2"_s : u"Q"_s);
    setVariable(u"LIBGL_ALWAYS_SOFTWARE"_s, u"1"_s);
    // Anybody may take pictures of the screen and play the keyboard.
    setVariable(u"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS"_s, u"1"_s);
    setVariable(u"KWIN_WAYLAND_NO_PERMISSION_CHECKS"_s, u"1"_s);
    const auto said = writeFile(u"say"_s, "#!/bin/sh\necho \"display $DISPLAY\"\nexec sleep infinity\n");
    QFile::setPermissions(said, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    compositor = start(copy, {u"--virtual"_s, u"--width"_s, u"1280"_s, u"--height"_s, u"800"_s, u"--socket"_s,
                              display, u"--no-lockscreen"_s, u"--xwayland"_s, said});
    awaitServer("display ");
}

/// Learns from what the compositor writes where its X server listens.
void OtherWaylandSession::awaitServer(const QByteArray& before) {
    const QDeadlineTimer deadline(patience * 2);
    while (const auto line = compositor->awaitLine(deadline)) {
        if (const auto start = line->indexOf(before); start >= 0) {
            setVariable(u"DISPLAY"_s, QString::fromLatin1(line->sliced(start + before.size()).trimmed()));
            return;
        }
    }
    fail(u"the compositor did not start: "_s + QString::fromUtf8(compositor->standardError()));
}

QString OtherWaylandSession::compositorSocket() const {
    return runtimeDirectory() % u'/' % display;
}

void OtherWaylandSession::stopCompositor() {
    compositor->signal(SIGKILL);
    (void)compositor->awaitExit();
}

} // namespace orvantile::test
