#include "platform/linux/desktop/PanelFrames.h"

#include "support/VirtualScheduler.h"

#include <gmock/gmock.h>
#include <vector>

namespace orvantile::platform::desktop {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

/// Grows from half its size in a fifth of a second.
class GrowingContent final : public PanelContent {
public:
    explicit GrowingContent(double duration_ = 0.2) : duration(duration_) {}

    [[nodiscard]] Size fittingSize() const override { return {100, 50}; }

    [[nodiscard]] QString title() const override { return QStringLiteral("label"); }

    void prepare(const Rect&, double) override {}

    [[nodiscard]] PanelFrame frameAt(double elapsed) const override {
        const bool settled = elapsed >= duration;
        return {.image = {}, .scale = settled ? 1 : 0.5 + elapsed, .opacity = 1, .settled = settled};
    }

private:
    double duration;
};

class PanelFramesTest : public ::testing::Test {
protected:
    std::vector<double> opacities() const {
        std::vector<double> all;
        for (const auto& frame : presented) {
            all.push_back(frame.opacity);
        }
        return all;
    }

    void show(double entrance = 0) {
        frames.setContent(std::make_shared<GrowingContent>(entrance));
        frames.setVisible(true);
        scheduler.turn();
    }

    test::VirtualScheduler scheduler;
    std::vector<PanelFrame> presented;
    PanelFrames frames{scheduler, [this](const PanelFrame& frame) { presented.push_back(frame); }};
    static constexpr double refresh = test::VirtualScheduler::frame;
};

TEST_F(PanelFramesTest, presentsNothingWhileItIsNotVisible) {
    frames.setContent(std::make_shared<GrowingContent>());
    frames.setAlpha(0.5);
    frames.animateAlpha(1, 0.1, {});
    scheduler.advance(1);
    EXPECT_TRUE(presented.empty());
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(PanelFramesTest, presentsTheFirstPictureOfAFadeAtOnceAsItIsSeenUntilTheSecondOne) {
    frames.setContent(std::make_shared<GrowingContent>(0));
    frames.setAlpha(0);
    frames.setVisible(true);
    frames.animateAlpha(1, 0.1, {});
    EXPECT_THAT(opacities(), ElementsAre(DoubleNear(PanelFrames::opening / 0.1, 1e-9)));
    EXPECT_TRUE(presented.front().settled);
}

TEST_F(PanelFramesTest, presentsOnceInALaterTurnWithoutAnAnimation) {
    frames.setContent(std::make_shared<GrowingContent>(0));
    frames.setVisible(true);
    frames.setAlpha(0.25);
    EXPECT_TRUE(presented.empty());
    scheduler.turn();
    EXPECT_THAT(opacities(), ElementsAre(0.25));
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(PanelFramesTest, fadesLinearlyAndStopsTicking) {
    show();
    presented.clear();
    frames.setAlpha(0);
    frames.animateAlpha(1, 5.5 * refresh, {});
    scheduler.advance(1);
    const auto near = [](double value) { return DoubleNear(value, 1e-9); };
    EXPECT_THAT(opacities(), ElementsAre(near(2 / 5.5), near(2 / 5.5), near(3 / 5.5), near(4 / 5.5),
                                         near(5 / 5.5), near(1)));
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(PanelFramesTest, endsAFadeAndAnEntranceWhenTheyWouldHaveEndedWithoutAnOpening) {
    frames.setContent(std::make_shared<GrowingContent>(0.15));
    frames.setAlpha(0);
    frames.setVisible(true);
    frames.animateAlpha(1, 0.12, {});
    scheduler.advance(0.15 - PanelFrames::lead - refresh);
    EXPECT_FALSE(presented.back().settled);
    EXPECT_EQ(presented.back().opacity, 1);
    scheduler.advance(2 * refresh);
    EXPECT_TRUE(presented.back().settled);
    EXPECT_TRUE(std::ranges::is_sorted(presented, {}, &PanelFrame::scale));
    EXPECT_TRUE(std::ranges::is_sorted(presented, {}, &PanelFrame::opacity));
}

TEST_F(PanelFramesTest, fadesOutWithoutAnOpening) {
    show();
    scheduler.advance(1);
    presented.clear();
    frames.animateAlpha(0, 0.2, {});
    EXPECT_THAT(opacities(), ElementsAre(DoubleNear(1 - PanelFrames::lead / 0.2, 1e-9)));
}

TEST_F(PanelFramesTest, callsACompletionAtItsTimeWithTheFinalAlpha) {
    show();
    double alpha = -1;
    double when = -1;
    frames.animateAlpha(0, 0.22, [&] {
        alpha = frames.alpha();
        when = scheduler.now();
    });
    scheduler.advance(0.219);
    EXPECT_EQ(when, -1);
    scheduler.advance(0.1);
    EXPECT_DOUBLE_EQ(when, 0.22);
    EXPECT_EQ(alpha, 0);
    EXPECT_EQ(presented.back().opacity, 0);
}

TEST_F(PanelFramesTest, handsTheAlphaToALaterAnimationButStillCallsTheEarlierCompletion) {
    show();
    int completed = 0;
    frames.animateAlpha(0, 0.22, [&] { ++completed; });
    scheduler.advance(0.11);
    frames.setAlpha(0);
    frames.animateAlpha(1, 0.12, {});
    scheduler.advance(0.1);
    EXPECT_EQ(completed, 0);
    EXPECT_NEAR(frames.alpha(), 0.1 / 0.12, 1e-9);
    scheduler.advance(0.02);
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(frames.alpha(), 1);
}

TEST_F(PanelFramesTest, fadesFromWhereALaterAnimationFindsTheAlpha) {
    show();
    frames.animateAlpha(0, 0.2, {});
    scheduler.advance(0.1);
    frames.animateAlpha(1, 0.2, {});
    scheduler.advance(0.1);
    EXPECT_NEAR(frames.alpha(), 0.75, 1e-9);
}

TEST_F(PanelFramesTest, runsTheEntranceUntilItSettles) {
    show(0.19);
    scheduler.advance(1);
    EXPECT_NEAR(presented.front().scale, 0.5 + PanelFrames::opening, 1e-9);
    EXPECT_EQ(presented.back().scale, 1);
    EXPECT_EQ(presented.size(), 12U);
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(PanelFramesTest, beginsTheEntranceAnewWithNewContent) {
    show(0.2);
    scheduler.advance(1);
    presented.clear();
    frames.setContent(std::make_shared<GrowingContent>(0.2));
    scheduler.turn();
    ASSERT_EQ(presented.size(), 1U);
    EXPECT_NEAR(presented.front().scale, 0.5 + PanelFrames::opening, 1e-9);
}

TEST_F(PanelFramesTest, drawsNoEntranceThatNobodySees) {
    frames.setAlpha(0);
    show(0.2);
    EXPECT_EQ(presented.size(), 1U);
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(PanelFramesTest, stopsWhenItIsTakenOffTheScreenButCompletes) {
    show(10);
    bool completed = false;
    frames.animateAlpha(0, 0.5, [&] { completed = true; });
    scheduler.advance(0.1);
    frames.setVisible(false);
    presented.clear();
    scheduler.advance(1);
    EXPECT_TRUE(presented.empty());
    EXPECT_TRUE(completed);
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(PanelFramesTest, survivesACompletionThatStartsAnimations) {
    show();
    int completed = 0;
    std::function<void()> again = [&] {
        if (++completed < 5) {
            frames.animateAlpha(completed % 2, 0.1, again);
        }
    };
    frames.animateAlpha(0, 0.1, again);
    scheduler.advance(1);
    EXPECT_EQ(completed, 5);
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(PanelFramesTest, takesAFadeOfNoLengthAsAnAssignment) {
    show();
    bool completed = false;
    frames.animateAlpha(0.5, 0, [&] { completed = true; });
    EXPECT_EQ(presented.back().opacity, 0.5);
    EXPECT_FALSE(completed);
    scheduler.turn();
    EXPECT_TRUE(completed);
}

} // namespace
} // namespace orvantile::platform::desktop
