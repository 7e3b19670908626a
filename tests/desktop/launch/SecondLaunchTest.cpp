// The program is launched while a copy of it runs.

#include "desktop/launch/RunningCopy.h"

#include "support/QtPrinting.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using std::chrono::steady_clock;
using namespace std::chrono_literals;

class SecondLaunchUnder : public ::testing::TestWithParam<WindowManager> {
protected:
    RunningCopy running{{.windowManager = GetParam()}};
};

TEST_P(SecondLaunchUnder, raisesAndFocusesTheOpenPreferences) {
    running.typeElsewhere();
    const auto begin = steady_clock::now();
    const auto second = running.launch();
    EXPECT_EQ(second->awaitExit(), 0);
    RecordProperty("milliseconds", static_cast<int>((steady_clock::now() - begin) / 1ms));
    EXPECT_EQ(second->standardError(), "");
    running.awaitPreferencesInFront();
    EXPECT_EQ(running.preferencesWindows(), 1);
    EXPECT_TRUE(running.process().isRunning());
}

TEST_P(SecondLaunchUnder, opensTheClosedPreferencesAgain) {
    running.windows().close(running.preferences().handle);
    running.windows().awaitGone(running.preferences().handle);
    running.typeElsewhere();
    EXPECT_EQ(running.launch()->awaitExit(), 0);
    running.awaitPreferencesInFront();
}

TEST_P(SecondLaunchUnder, bringsMinimisedPreferencesBack) {
    running.typeElsewhere();
    running.minimise();
    EXPECT_EQ(running.launch()->awaitExit(), 0);
    running.awaitPreferencesInFront();
}

INSTANTIATE_TEST_SUITE_P(Managers, SecondLaunchUnder,
                         ::testing::Values(WindowManager::openbox, WindowManager::xfwm4, WindowManager::kwin),
                         [](const auto& parameter) {
                             switch (parameter.param) {
                             case WindowManager::xfwm4:
                                 return "xfwm4";
                             case WindowManager::kwin:
                                 return "kwin";
                             default:
                                 return "openbox";
                             }
                         });

class SecondLaunch : public ::testing::Test {
protected:
    RunningCopy running;
};

TEST_F(SecondLaunch, endsEvenThoughTheRunningCopyHangsAndIsHeardLater) {
    running.typeElsewhere();
    running.process().signal(SIGSTOP);
    const auto begin = steady_clock::now();
    EXPECT_EQ(running.launch()->awaitExit(), 0);
    EXPECT_LT(steady_clock::now() - begin, 5s) << "generous on a busy machine";
    running.process().signal(SIGCONT);
    running.awaitPreferencesInFront();
    EXPECT_EQ(running.preferencesWindows(), 1);
}

TEST_F(SecondLaunch, takesThePlaceOfACopyThatWasKilled) {
    running.process().signal(SIGKILL);
    EXPECT_EQ(running.process().awaitExit(), -SIGKILL);
    running.windows().awaitGone(running.preferences().handle);
    running.startAnew();
    EXPECT_EQ(running.launch()->awaitExit(), 0);
    EXPECT_EQ(running.preferencesWindows(), 1);
}

TEST_F(SecondLaunch, fromAnotherDisplayShowsThePreferencesWhereTheCopyRuns) {
    running.typeElsewhere();
    const auto other =
        running.session().start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
    const auto number = other->awaitLine();
    ASSERT_TRUE(number);
    running.session().setVariable(u"DISPLAY"_s, u':' + QString::fromLatin1(number->trimmed()));
    EXPECT_EQ(running.launch()->awaitExit(), 0);
    running.awaitPreferencesInFront();
}

TEST_F(SecondLaunch, isAFirstOneInAnotherSession) {
    RunningCopy other;
    EXPECT_EQ(other.preferencesWindows(), 1);
    EXPECT_TRUE(other.process().isRunning());
    EXPECT_TRUE(running.process().isRunning());
}

TEST(SecondLaunchWithoutABus, startsAnotherCopy) {
    RunningCopy running({.sessionBus = false, .accessibility = false});
    const auto second = running.launch();
    running.windows().awaitWindow(ofProcess(second->processIdentifier()));
    EXPECT_EQ(running.preferencesWindows(), 2);
    EXPECT_TRUE(running.process().isRunning());
}

/// What programs tell those who show that a launch is under way.
class LaunchNews {
public:
    explicit LaunchNews(const QString& display) : x(display) {
        x.select(x.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    }

    /// The next message; empty when there is none in time.
    [[nodiscard]] QByteArray await() const {
        QByteArray text;
        const auto collect = [&](const xcb_generic_event_t& event) {
            constexpr std::uint8_t withoutSentFlag = 0x7f;
            if ((event.response_type & withoutSentFlag) != XCB_CLIENT_MESSAGE) {
                return;
            }
            const auto& piece = reinterpret_cast<const xcb_client_message_event_t&>(event);
            if (piece.type == x.atom("_NET_STARTUP_INFO_BEGIN") ||
                piece.type == x.atom("_NET_STARTUP_INFO")) {
                text.append(reinterpret_cast<const char*>(piece.data.data8), sizeof piece.data.data8);
            }
        };
        const auto complete = [&] { return text.contains('\0'); };
        return x.await(complete, collect, QDeadlineTimer(patience)) ? text.left(text.indexOf('\0'))
                                                                    : QByteArray();
    }

private:
    XConnection x;
};

TEST_F(SecondLaunch, endsTheStartupNotice) {
    running.typeElsewhere();
    const LaunchNews news(running.session().display());
    running.session().setVariable(u"DESKTOP_STARTUP_ID"_s, u"panel/orvantile/1234-5-host_TIME678"_s);
    EXPECT_EQ(running.launch()->awaitExit(), 0);
    EXPECT_EQ(news.await(), "remove: ID=\"panel/orvantile/1234-5-host_TIME678\"");
    running.awaitPreferencesInFront();
}

} // namespace
} // namespace orvantile::test
