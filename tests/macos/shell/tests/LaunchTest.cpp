#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/application/MacApplication.h"
#include "platform/macos/application/MacLaunch.h"
#include "support/VirtualScheduler.h"

namespace orvantile::test {
namespace {

using platform::macos::MacApplication;
using platform::macos::MacLaunch;
using ::testing::ElementsAre;

class MacLaunchTest : public ShellTest {
protected:
    MacLaunchTest() { MacApplication::prepare(); }

    ~MacLaunchTest() override {
        MacApplication::onLaunched({});
        MacApplication::onReopened({});
    }

    VirtualScheduler scheduler;
    MacLaunch launch;
    int finished = 0;
};

// The first to run: the system says so once in the life of a process.
TEST_F(MacLaunchTest, finishesWhenTheSystemSaysSoAndNotBefore) {
    if (MacApplication::hasLaunched()) {
        GTEST_SKIP() << "launching has finished in this process already; run this test by itself";
    }
    launch.onFinished(scheduler, [this] { ++finished; });
    scheduler.advance(1);
    EXPECT_EQ(finished, 0);

    desktop::finishLaunching();
    EXPECT_EQ(finished, 1);
}

TEST_F(MacLaunchTest, finishesInALaterTurnWhenTheSystemHasSaidSoBefore) {
    desktop::finishLaunching();
    launch.onFinished(scheduler, [this] { ++finished; });
    EXPECT_EQ(finished, 0);

    scheduler.turn();
    EXPECT_EQ(finished, 1);
}

TEST_F(MacLaunchTest, isNeverTakenOver) {
    EXPECT_FALSE(launch.isTakenOver());
}

TEST_F(MacLaunchTest, tellsOfSecondLaunches) {
    std::vector<bool> reopened;
    launch.onReopen([&](bool hasVisibleWindows) { reopened.push_back(hasVisibleWindows); });
    (void)desktop::launchAgain(true);
    (void)desktop::launchAgain(false);

    EXPECT_THAT(reopened, ElementsAre(true, false));
}

} // namespace
} // namespace orvantile::test
