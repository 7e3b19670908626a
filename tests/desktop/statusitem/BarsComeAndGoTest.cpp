// The program's item while bars start late, restart and vanish, and what it does while nothing happens.

#include "desktop/statusitem/ScriptedBar.h"
#include "support/QtPrinting.h"
#include "support/desktop/BusTraffic.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PanelHost.h"
#include "support/desktop/ProcessCost.h"
#include "support/desktop/Screenshot.h"
#include "support/desktop/SessionBusCalls.h"
#include "support/desktop/WindowWatcher.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// An item is to be back within this time.
constexpr auto soon = 1s;

class BarsComeAndGo : public ::testing::Test {
protected:
    void startProgram() {
        program = session.start(QStringLiteral(ORVANTILE_EXECUTABLE));
        const WindowWatcher windows(session.display());
        const auto preferences = windows.awaitWindow(titled(u"Orvantile Preferences"_s));
        windows.close(preferences.handle);
        windows.awaitGone(preferences.handle);
        item = u"org.kde.StatusNotifierItem-%1-1"_s.arg(program->processIdentifier());
    }

    [[nodiscard]] QDeadlineTimer aSecond() const { return QDeadlineTimer(soon); }

    void expectItem(const ScriptedBar& bar) const {
        EXPECT_TRUE(bar.await([&] { return !bar.items().isEmpty(); }, aSecond()));
        EXPECT_THAT(bar.items(), ElementsAre(item));
    }

    [[nodiscard]] pid_t process() const { return program->processIdentifier(); }

    /// Waits until the program has nothing left to do; then nothing may happen in it for a while.
    void expectIdle(const BusTraffic& traffic) const {
        const auto own = SessionBusCalls(session.sessionBusAddress()).connectionsOf(process());
        ASSERT_FALSE(own.isEmpty());
        const auto sent = [&](std::chrono::milliseconds time) {
            auto messages = traffic.during(time);
            std::erase_if(messages, [&](const auto& message) { return !message.concerns(own); });
            return messages;
        };
        const QDeadlineTimer deadline(patience);
        bool quiet = false;
        while (!quiet && !deadline.hasExpired()) {
            const auto woken = wakeups(process());
            quiet = sent(1s).empty() && wokenBetween(woken, wakeups(process())) == 0;
        }
        ASSERT_TRUE(quiet) << "it does not come to rest";
        const auto woken = wakeups(process());
        const auto used = cpuSeconds(process());
        const auto messages = sent(10s);
        EXPECT_TRUE(messages.empty()) << describe(messages).toStdString();
        EXPECT_EQ(wokenBetween(woken, wakeups(process())), 0);
        EXPECT_EQ(cpuSeconds(process()) - used, 0);
    }

    /// The screen once it has not changed for a second.
    [[nodiscard]] QImage awaitStillPicture(const BusTraffic& traffic) const {
        auto before = takeScreenshot(session.display());
        for (const QDeadlineTimer deadline(patience); !deadline.hasExpired();) {
            static_cast<void>(traffic.during(1s));
            if (auto now = takeScreenshot(session.display()); now == before) {
                break;
            } else {
                before = std::move(now);
            }
        }
        return before;
    }

    PrivateSession session;
    std::unique_ptr<ChildProcess> program;
    QString item;
};

TEST_F(BarsComeAndGo, withoutABarTheProgramIsIdle) {
    const BusTraffic traffic(session.sessionBusAddress());
    startProgram();
    expectIdle(traffic);
}

TEST_F(BarsComeAndGo, aBarThatStartsLateGetsTheItemAndLeavesItInPeace) {
    startProgram();
    ScriptedBar bar(session.sessionBusAddress());
    bar.appear();
    expectItem(bar);
    EXPECT_TRUE(bar.await([&] { return bar.hostQuestions() == 1; }, aSecond()));
    const BusTraffic traffic(session.sessionBusAddress());
    expectIdle(traffic);
}

TEST_F(BarsComeAndGo, aBarThatRestartsGetsTheItemAgain) {
    ScriptedBar bar(session.sessionBusAddress());
    bar.appear();
    startProgram();
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        expectItem(bar);
        bar.disappear();
        ASSERT_THAT(bar.items(), IsEmpty());
        bar.appear();
    }
    expectItem(bar);
    EXPECT_EQ(bar.registrations(), 6) << "once each";
}

TEST_F(BarsComeAndGo, aBarThatTakesThePlaceOfACrashedOneGetsTheItem) {
    auto crashing = std::make_unique<ScriptedBar>(session.sessionBusAddress());
    crashing->appear();
    startProgram();
    expectItem(*crashing);
    crashing.reset();
    ScriptedBar successor(session.sessionBusAddress());
    successor.appear();
    expectItem(successor);
}

TEST_F(BarsComeAndGo, aBarThatIsNotReadyYetIsAskedAgain) {
    startProgram();
    ScriptedBar bar(session.sessionBusAddress());
    bar.refusals = 2;
    bar.appear();
    expectItem(bar);
    EXPECT_EQ(bar.registrations(), 3);
}

TEST_F(BarsComeAndGo, aBarThatRefusesForGoodIsLeftAlone) {
    startProgram();
    ScriptedBar bar(session.sessionBusAddress());
    bar.refusals = 1000;
    bar.appear();
    EXPECT_TRUE(bar.await([&] { return bar.registrations() == 11; }));
    EXPECT_FALSE(bar.await([&] { return bar.registrations() > 11; }, aSecond()));
    const BusTraffic traffic(session.sessionBusAddress());
    expectIdle(traffic);
    bar.disappear();
    bar.refusals = 0;
    bar.appear();
    expectItem(bar);
}

TEST_F(BarsComeAndGo, aHostThatComesAfterItsWatcherIsNoticed) {
    ScriptedBar bar(session.sessionBusAddress());
    bar.setHost(false);
    bar.appear();
    startProgram();
    EXPECT_TRUE(bar.await([&] { return bar.hostQuestions() == 1; }));
    bar.setHost(true);
    EXPECT_TRUE(bar.await([&] { return bar.hostQuestions() == 2; }, aSecond()));
    EXPECT_THAT(bar.items(), ElementsAre(item));
}

/// The same with a panel that people use.
TEST_F(BarsComeAndGo, aRealPanelThatStartsLateAndIsKilledShowsTheItemAgain) {
    startProgram();
    const BusTraffic traffic(session.sessionBusAddress());
    KeyInjector(session.display()).moveTo({5, 5});
    const auto awaitRegistration = [&] {
        ASSERT_TRUE(
            traffic.await(u"NameOwnerChanged"_s, u"org.kde.StatusNotifierWatcher"_s, QDeadlineTimer(60s)))
            << "no panel";
        EXPECT_TRUE(traffic.await(u"StatusNotifierItemRegistered"_s, {}, aSecond()));
    };
    const auto bare = takeScreenshot(session.display());
    auto panel = startPanel(session, PanelHost::xfce);
    awaitRegistration();
    const auto shown = awaitStillPicture(traffic);
    ASSERT_NE(shown, bare);

    panel->signal(SIGKILL);
    ASSERT_EQ(panel->awaitExit(), -SIGKILL);
    ASSERT_TRUE(traffic.await(u"NameOwnerChanged"_s, u"org.kde.StatusNotifierWatcher"_s)) << "it has gone";
    panel = startPanel(session, PanelHost::xfce);
    awaitRegistration();
    EXPECT_EQ(awaitStillPicture(traffic), shown) << "the panel with the icon, as before";
    expectIdle(traffic);
}

} // namespace
} // namespace orvantile::test
