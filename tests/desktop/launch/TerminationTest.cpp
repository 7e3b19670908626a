// What ends the program from outside.

#include "desktop/launch/RunningCopy.h"

#include "desktop/applications/Stage.h"
#include "desktop/launch/SessionManager.h"
#include "support/QtPrinting.h"

#include <QFile>
#include <chrono>
#include <csignal>
#include <gmock/gmock.h>
#include <sys/socket.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using std::chrono::steady_clock;
using namespace std::chrono_literals;
using ::testing::EndsWith;
using ::testing::HasSubstr;

/// Clicks the first entry of the status menu, which switches the program off.
void switchOff(const PrivateSession& session, const ChildProcess& program) {
    const QString item = u"org.kde.StatusNotifierItem-%1-1"_s.arg(program.processIdentifier());
    const auto waiter = session.start(u"gdbus"_s, {u"wait"_s, u"--session"_s, u"--timeout"_s, u"15"_s, item});
    EXPECT_EQ(waiter->awaitExit(), 0) << "no status item";
    const auto click =
        session.start(u"gdbus"_s, {u"call"_s, u"--session"_s, u"--dest"_s, item, u"--object-path"_s,
                                   u"/MenuBar"_s, u"--method"_s, u"com.canonical.dbusmenu.Event"_s, u"1"_s,
                                   u"clicked"_s, u"<0>"_s, u"0"_s});
    EXPECT_EQ(click->awaitExit(), 0) << click->standardError().toStdString();
}

std::string settingsFile(const PrivateSession& session) {
    QFile file(session.configuration() + u"/orvantile/orvantile.ini"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

/// Kills the X server under everybody.
void killServer(const PrivateSession& session) {
    const XConnection x(session.display());
    ucred server{};
    socklen_t size = sizeof server;
    ASSERT_EQ(::getsockopt(xcb_get_file_descriptor(x.get()), SOL_SOCKET, SO_PEERCRED, &server, &size), 0);
    ASSERT_GT(server.pid, 1);
    ASSERT_EQ(::kill(server.pid, SIGKILL), 0);
}

/// The toolkit may say something of its own before.
const std::string lossOfTheServer = "orvantile: the X server has gone\n";

/// Brings a HUD up that stays for a while.
void showHud(Stage& stage) {
    stage.session().writeFile(u".config/orvantile/orvantile.ini"_s,
                              "[General]\ndisplaySeconds=5\nsoundEnabled=false\n");
    stage.start(mousepad);
    stage.startOrvantile();
    const QDeadlineTimer deadline(60s);
    while (!stage.huds().isVisible() && !deadline.hasExpired()) {
        stage.keys().press(mousepad.fenceKeys);
        static_cast<void>(stage.huds().awaitNext(QDeadlineTimer(300ms)));
    }
    ASSERT_TRUE(stage.huds().isVisible());
}

class EndedBy : public ::testing::TestWithParam<int> {};

TEST_P(EndedBy, aSignalWithThePreferencesOpenAndLosesNothing) {
    RunningCopy running;
    switchOff(running.session(), running.process());
    const auto begin = steady_clock::now();
    running.process().signal(GetParam());
    EXPECT_EQ(running.process().awaitExit(), 0);
    EXPECT_LT(steady_clock::now() - begin, 2s) << "generous on a busy machine";
    EXPECT_EQ(running.process().standardError().toStdString(), "");
    EXPECT_THAT(settingsFile(running.session()), HasSubstr("enabled=false"));
}

TEST_P(EndedBy, aSignalWhileAHudIsUp) {
    Stage stage;
    showHud(stage);
    stage.orvantile().signal(GetParam());
    EXPECT_EQ(stage.orvantile().awaitExit(), 0);
    EXPECT_TRUE(stage.huds().awaitHidden());
    EXPECT_EQ(stage.orvantile().standardError().toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(Signals, EndedBy, ::testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& parameter) {
                             return std::string("SIG") + sigabbrev_np(parameter.param);
                         });

TEST(Termination, isLeftToOthersWhenTheUserHasSaidSo) {
    PrivateSession session;
    const auto program = session.start(u"nohup"_s, {QStringLiteral(ORVANTILE_EXECUTABLE)});
    WindowWatcher(session.display()).awaitActive(ofProcess(program->processIdentifier()));
    QFile status(u"/proc/%1/status"_s.arg(program->processIdentifier()));
    ASSERT_TRUE(status.open(QIODevice::ReadOnly));
    const auto lines = status.readAll().split('\n');
    const auto mask = [&](const QByteArray& name) {
        for (const auto& line : lines) {
            if (line.startsWith(name)) {
                return line.mid(name.size()).trimmed().toULongLong(nullptr, 16);
            }
        }
        return 0ULL;
    };
    constexpr auto bit = [](int signal) { return 1ULL << static_cast<unsigned>(signal - 1); };
    EXPECT_NE(mask("SigIgn:") & bit(SIGHUP), 0U);
    EXPECT_EQ(mask("SigCgt:") & bit(SIGHUP), 0U);
    EXPECT_NE(mask("SigCgt:") & bit(SIGTERM), 0U);
}

TEST(LossOfTheServer, endsItCleanlyWithThePreferencesOpen) {
    RunningCopy running;
    switchOff(running.session(), running.process());
    killServer(running.session());
    EXPECT_EQ(running.process().awaitExit(), 0);
    EXPECT_THAT(running.process().standardError().toStdString(), EndsWith(lossOfTheServer));
    EXPECT_THAT(settingsFile(running.session()), HasSubstr("enabled=false"));
}

TEST(LossOfTheServer, endsItCleanlyWhileAHudIsUp) {
    Stage stage;
    showHud(stage);
    killServer(stage.session());
    EXPECT_EQ(stage.orvantile().awaitExit(), 0);
    EXPECT_THAT(stage.orvantile().standardError().toStdString(), EndsWith(lossOfTheServer));
}

TEST(EndOfTheSession, endsItWithoutBeingHeldUpByItsWindows) {
    PrivateSession session({.accessibility = false}); // which the program asks about, in a window
    SessionManager manager;
    session.setVariable(u"SESSION_MANAGER"_s, manager.address());
    const auto program = session.start(QStringLiteral(ORVANTILE_EXECUTABLE));
    ASSERT_TRUE(manager.awaitClient(QDeadlineTimer(patience)));
    const WindowWatcher windows(session.display());
    windows.awaitWindow(titled(u"Orvantile Preferences"_s));
    windows.awaitWindow([](const Window& window) { return window.title == u"Orvantile"; });
    switchOff(session, *program);
    EXPECT_TRUE(manager.logOut(QDeadlineTimer(patience)));
    EXPECT_EQ(program->awaitExit(), 0);
    EXPECT_EQ(program->standardError().toStdString(), "");
    EXPECT_THAT(settingsFile(session), HasSubstr("enabled=false"));
}

} // namespace
} // namespace orvantile::test
