#include "support/desktop/PrivateSession.h"

#include <QDir>
#include <QFile>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

bool anyoneLivesIn(const QString& runtimeDirectory) {
    const QByteArray mark = "XDG_RUNTIME_DIR=" + runtimeDirectory.toLatin1();
    for (const QString& entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile environ(u"/proc/" % entry % u"/environ");
        if (environ.open(QIODevice::ReadOnly) && environ.readAll().split('\0').contains(mark)) {
            return true;
        }
    }
    return false;
}

class EveryWindowManager : public ::testing::TestWithParam<WindowManager> {};

TEST_P(EveryWindowManager, announcesItself) {
    const PrivateSession session({.windowManager = GetParam(), .accessibility = false});
    const XConnection x(session.display());
    const auto check = x.numbers(x.root(), "_NET_SUPPORTING_WM_CHECK");
    ASSERT_EQ(check.size(), 1U);
    EXPECT_FALSE(x.bytes(check.front(), "_NET_WM_NAME").isEmpty());
}

INSTANTIATE_TEST_SUITE_P(, EveryWindowManager,
                         ::testing::Values(WindowManager::openbox, WindowManager::xfwm4,
                                           WindowManager::kwin));

TEST(PrivateSession, hasAnAccessibilityBusThatIsSwitchedOn) {
    const PrivateSession session;
    EXPECT_FALSE(session.accessibilityBusAddress().isEmpty());
    EXPECT_TRUE(session.accessibilityEnabled());
    session.setAccessibilityEnabled(false);
    EXPECT_FALSE(session.accessibilityEnabled());
}

TEST(PrivateSession, accessibilityBusCanEndAndComeBack) {
    PrivateSession session;
    const QString former = session.accessibilityBusAddress();
    session.stopAccessibility();
    session.startAccessibility();
    EXPECT_NE(session.accessibilityBusAddress(), former);
    EXPECT_TRUE(session.accessibilityEnabled());
}

TEST(PrivateSession, compositorComesAndGoes) {
    PrivateSession session({.compositor = true, .accessibility = false});
    session.stopCompositor();
    session.startCompositor();
}

TEST(PrivateSession, endsEverythingThatItStarted) {
    QString runtimeDirectory;
    {
        const PrivateSession session({.compositor = true});
        runtimeDirectory = session.runtimeDirectory();
        EXPECT_TRUE(anyoneLivesIn(runtimeDirectory));
    }
    EXPECT_FALSE(anyoneLivesIn(runtimeDirectory));
    EXPECT_FALSE(QFile::exists(runtimeDirectory));
}

TEST(PrivateSession, saysWhichProgramIsMissing) {
    const PrivateSession session({.windowManager = WindowManager::none, .sessionBus = false});
    try {
        (void)session.start(QStringLiteral("no-such-program"));
        FAIL() << "started a program that does not exist";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("no-such-program"));
    }
}

TEST(ChildProcess, tellsExitCodeAndSignal) {
    const PrivateSession session({.windowManager = WindowManager::none, .sessionBus = false});
    EXPECT_EQ(
        session.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("exit 7")})->awaitExit(),
        7);
    const auto sleeper = session.start(QStringLiteral("sleep"), {QStringLiteral("60")});
    EXPECT_TRUE(sleeper->isRunning());
    EXPECT_FALSE(sleeper->awaitExit(QDeadlineTimer(10)).has_value());
    sleeper->signal(SIGKILL);
    EXPECT_EQ(sleeper->awaitExit(), -SIGKILL);
}

TEST(ChildProcess, readsOutputByLinesAndErrorsWhole) {
    const PrivateSession session({.windowManager = WindowManager::none, .sessionBus = false});
    const auto writer = session.start(
        QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("echo one; echo two; echo wrong >&2")});
    EXPECT_EQ(writer->awaitLine(), "one");
    EXPECT_EQ(writer->awaitLine(), "two");
    EXPECT_EQ(writer->awaitLine(), std::nullopt);
    EXPECT_EQ(writer->awaitExit(), 0);
    EXPECT_EQ(writer->standardError(), "wrong\n");
}

} // namespace
} // namespace orvantile::test
