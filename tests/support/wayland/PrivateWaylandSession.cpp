#include "support/wayland/PrivateWaylandSession.h"

#include <QImage>
#include <csignal>
#include <stdexcept>
#include <unistd.h>

namespace orvantile::test {
namespace {

[[noreturn]] void fail(const QString& what) {
    throw std::runtime_error(what.toStdString());
}

/// Tells when everything stands, with what it is called.
QByteArray configurationFor(const WaylandSessionOptions& options) {
    const QByteArray size =
        QByteArray::number(options.output.width()) + 'x' + QByteArray::number(options.output.height());
    return QByteArray("xwayland ") + (options.xwayland ? "enable" : "disable") +
           "\n"
           "output * " +
           (options.host == nullptr ? "resolution " + size : QByteArray()) +
           " bg #205080 solid_color\n"
           "default_border none\n"
           "focus_follows_mouse no\n"
           "focus_on_window_activation focus\n"
           "exec echo \"ready $WAYLAND_DISPLAY $SWAYSOCK $DISPLAY\"\n";
}

/// sway refuses to run as root, which is what containers are used as: there it gets another number for the
/// same user.
std::unique_ptr<ChildProcess> startUnprivileged(const PrivateEnvironment& session, QStringList command) {
    if (::geteuid() == 0) {
        command = QStringList{QStringLiteral("unshare"), QStringLiteral("--user"),
                              QStringLiteral("--map-user=1000"), QStringLiteral("--map-group=1000")} +
                  command;
    }
    return session.start(command.first(), command.mid(1));
}

} // namespace

PrivateWaylandSession::PrivateWaylandSession(const WaylandSessionOptions& options)
    : PrivateEnvironment(options.locale) {
    setVariable(QStringLiteral("XDG_SESSION_TYPE"), QStringLiteral("wayland"));
    setVariable(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("sway"));
    if (options.sessionBus) {
        startSessionBus();
    }
    startCompositor(options);
    if (options.sessionBus && options.accessibility) {
        startAccessibility();
    }
}

PrivateWaylandSession::~PrivateWaylandSession() {
    control.reset();
    compositor.reset();
    stopSessionBus();
}

void PrivateWaylandSession::startCompositor(const WaylandSessionOptions& options) {
    const auto configuration = writeFile(QStringLiteral("sway.conf"), configurationFor(options));
    if (options.host == nullptr) {
        setVariable(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
        setVariable(QStringLiteral("WLR_HEADLESS_OUTPUTS"), QString::number(options.outputs));
    } else {
        setVariable(QStringLiteral("WLR_BACKENDS"), QStringLiteral("wayland"));
        setVariable(QStringLiteral("WLR_WL_OUTPUTS"), QString::number(options.outputs));
        setVariable(QStringLiteral("WAYLAND_DISPLAY"),
                    options.host->runtimeDirectory() % u'/' % options.host->display());
    }
    setVariable(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    setVariable(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    compositor =
        startUnprivileged(*this, {QStringLiteral("sway"), QStringLiteral("--config"), configuration});
    QDeadlineTimer deadline(patience * 2);
    while (const auto line = compositor->awaitLine(deadline)) {
        const auto words = line->split(' ');
        if (words.size() >= 3 && words[0] == "ready") {
            displayName = QString::fromUtf8(words[1]);
            setVariable(QStringLiteral("WAYLAND_DISPLAY"), displayName);
            setVariable(QStringLiteral("SWAYSOCK"), QString::fromUtf8(words[2]));
            if (words.size() > 3 && !words[3].isEmpty()) {
                setVariable(QStringLiteral("DISPLAY"), QString::fromUtf8(words[3]));
            }
            control.emplace(QString::fromUtf8(words[2]));
            return;
        }
    }
    fail(u"sway did not start: " % QString::fromUtf8(compositor->standardError()));
}

QImage PrivateWaylandSession::screenshot(const QString& output) const {
    const QString file = home() + QStringLiteral("/screenshot.png");
    QStringList arguments{QStringLiteral("-l"), QStringLiteral("0"), file};
    if (!output.isEmpty()) {
        arguments = QStringList{QStringLiteral("-o"), output} + arguments;
    }
    const auto grim = start(QStringLiteral("grim"), arguments);
    if (grim->awaitExit() != 0) {
        fail(u"grim failed: " % QString::fromUtf8(grim->standardError()));
    }
    return QImage(file);
}

void PrivateWaylandSession::stopCompositor() {
    compositor->signal(SIGKILL);
    (void)compositor->awaitExit();
}

} // namespace orvantile::test
