#include "macos/axfake/AxFake.h"
#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/desktop/MacScheduler.h"

#include <limits>

namespace orvantile::test {
namespace {

using platform::macos::MacScheduler;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacSchedulerTest : public ShellTest {
protected:
    [[nodiscard]] std::function<void()> noting(int number) {
        return [this, number] { ran.push_back(number); };
    }

    AxFake ax; ///< plays the main queue
    MacScheduler scheduler;
    std::vector<int> ran;
};

TEST_F(MacSchedulerTest, putsWorkOffToALaterTurnOfTheMainQueueInOrder) {
    scheduler.runLater(noting(1));
    scheduler.runLater(noting(2));
    EXPECT_THAT(ran, IsEmpty());

    ax.turnMainQueue();
    EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST_F(MacSchedulerTest, schedulesATimerThatFiresOnce) {
    const auto scheduled = scheduler.runAfter(1.2, noting(1));
    EXPECT_THAT(calls(), ElementsAre("[NSTimer scheduledTimerWithTimeInterval:1.2 repeats:NO block:block]"));

    desktop::advance(1.19);
    EXPECT_THAT(ran, IsEmpty());
    desktop::advance(0.02);
    EXPECT_THAT(ran, ElementsAre(1));
    desktop::advance(10);
    EXPECT_THAT(ran, ElementsAre(1));
}

TEST_F(MacSchedulerTest, runsNothingThatHasBeenInvalidated) {
    const auto scheduled = scheduler.runAfter(1, noting(1));
    scheduled->invalidate();
    EXPECT_EQ(calls().back(), "[NSTimer invalidate]");
    scheduled->invalidate();
    EXPECT_THAT(calls(), ::testing::SizeIs(2));
    desktop::advance(2);

    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(MacSchedulerTest, runsNothingWhoseHandleIsGone) {
    scheduler.runAfter(1, noting(1)).reset();
    desktop::advance(2);

    EXPECT_THAT(ran, IsEmpty());
    EXPECT_EQ(desktop::pendingTimers(), 0U);
}

TEST_F(MacSchedulerTest, letsWorkDestroyItsOwnTimer) {
    std::unique_ptr<platform::Scheduled> scheduled;
    {
        const desktop::Pool turn;
        scheduled =
            scheduler.runAfter(1, [&, keep = std::string("a capture on the heap, not in the object")] {
                scheduled.reset();
                ran.push_back(keep.starts_with("a capture") ? 1 : 0);
            });
    }
    desktop::advance(2);

    EXPECT_THAT(ran, ElementsAre(1));
}

TEST_F(MacSchedulerTest, putsWorkOnTheMainQueueForLaterWithoutATimer) {
    const auto scheduled = scheduler.runOnMainQueueAfter(0.5, noting(1));
    EXPECT_THAT(ax.calls, ElementsAre("dispatch_after_f 500 ms main"));
    EXPECT_THAT(calls(), IsEmpty());

    ax.advance(0.49);
    ax.turnMainQueue();
    EXPECT_THAT(ran, IsEmpty());
    ax.advance(0.01);
    EXPECT_THAT(ran, IsEmpty());
    ax.turnMainQueue();
    EXPECT_THAT(ran, ElementsAre(1));
}

TEST_F(MacSchedulerTest, runsNothingOnTheMainQueueThatHasBeenInvalidatedOrWhoseHandleIsGone) {
    const auto held = std::make_shared<int>();
    const auto invalidated = scheduler.runOnMainQueueAfter(0.5, [this, held] { ran.push_back(1); });
    invalidated->invalidate();
    scheduler.runOnMainQueueAfter(0.5, [this, held] { ran.push_back(2); }).reset();
    EXPECT_EQ(held.use_count(), 1);
    ax.advance(1);
    ax.turnMainQueue();

    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(MacSchedulerTest, runsAtOnceWhatIsForATimeThatNeverComesOrHasGone) {
    const auto past = scheduler.runOnMainQueueAfter(-1, noting(1));
    const auto never = scheduler.runOnMainQueueAfter(std::numeric_limits<double>::infinity(), noting(2));
    const auto none = scheduler.runOnMainQueueAfter(std::numeric_limits<double>::quiet_NaN(), noting(3));
    ax.advance(0);
    ax.turnMainQueue();

    EXPECT_THAT(ran, ElementsAre(1, 2, 3));
}

TEST_F(MacSchedulerTest, runsAtEachRefreshOfTheMainScreenEvenWhileAMenuIsOpen) {
    desktop::setScreens({{0, 0, 10, 10, 0, 0, 10, 10, 1, 120}});
    const auto scheduled = scheduler.runEveryFrame(noting(1));
    EXPECT_THAT(calls(), ElementsAre("[NSScreen mainScreen]", "[NSScreen maximumFramesPerSecond]",
                                     "[NSTimer timerWithTimeInterval:0.00833333 repeats:YES block:block]",
                                     "[NSRunLoop mainRunLoop]",
                                     "[NSRunLoop addTimer:<NSTimer> forMode:\"kCFRunLoopCommonModes\"]"));
    desktop::advance(0.026);
    EXPECT_THAT(ran, ElementsAre(1, 1, 1));

    scheduled->invalidate();
    desktop::advance(1);
    EXPECT_THAT(ran, ElementsAre(1, 1, 1));
}

TEST_F(MacSchedulerTest, keepsToASensibleRateWhateverTheScreenSays) {
    const auto rateFor = [&](long framesPerSecond) {
        desktop::setScreens({{0, 0, 10, 10, 0, 0, 10, 10, 1, framesPerSecond}});
        ran.clear();
        const auto scheduled = scheduler.runEveryFrame(noting(1));
        desktop::advance(1.001);
        return ran.size();
    };
    EXPECT_EQ(rateFor(0), 30U);
    EXPECT_EQ(rateFor(1000), 240U);

    desktop::setScreens({});
    ran.clear();
    const auto scheduled = scheduler.runEveryFrame(noting(1));
    desktop::advance(1.001);
    EXPECT_EQ(ran.size(), 60U);
}

TEST_F(MacSchedulerTest, hasTheClockOfTheSystemThatNobodySets) {
    const double before = scheduler.now();
    desktop::advance(0.25);

    EXPECT_EQ(scheduler.now(), before + 0.25);
    EXPECT_EQ(calls().back(), "[NSProcessInfo systemUptime]");
}

} // namespace
} // namespace orvantile::test
