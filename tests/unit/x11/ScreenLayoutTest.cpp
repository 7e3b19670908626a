#include "platform/linux/x11/ScreenLayout.h"

#include <gmock/gmock.h>

namespace orvantile::platform::x11 {
namespace {

Monitor monitor(const PixelRect& frame, double scale = 1) {
    return {frame, frame, scale};
}

TEST(ScreenLayout, putsTheOriginAtTheBottomLeftOfTheFirstMonitor) {
    const ScreenLayout layout({{{0, 0, 1280, 800}, {0, 30, 1280, 740}, 1}});
    const auto screen = layout.screen(0);
    EXPECT_EQ(screen.frame, (Rect{0, 0, 1280, 800}));
    EXPECT_EQ(screen.visibleFrame, (Rect{0, 30, 1280, 740}));
    EXPECT_EQ(screen.scale, 1);
}

TEST(ScreenLayout, givesMonitorsLeftOfAndBelowTheFirstNegativeCoordinates) {
    const ScreenLayout layout(
        {monitor({1000, 0, 1000, 800}), monitor({0, 200, 1000, 700}), monitor({1000, 800, 600, 400})});
    EXPECT_EQ(layout.screen(1).frame, (Rect{-1000, -100, 1000, 700}));
    EXPECT_EQ(layout.screen(2).frame, (Rect{0, -400, 600, 400}));
}

TEST(ScreenLayout, dividesLengthsByTheScaleOfTheirMonitor) {
    const ScreenLayout layout({{{0, 0, 2560, 1600}, {0, 60, 2560, 1540}, 2}, monitor({2560, 0, 1000, 800})});
    EXPECT_EQ(layout.screen(0).frame, (Rect{0, 0, 1280, 800}));
    EXPECT_EQ(layout.screen(0).visibleFrame, (Rect{0, 0, 1280, 770}));
    EXPECT_EQ(layout.screen(1).frame, (Rect{2560, 0, 1000, 800}));
}

TEST(ScreenLayout, placesPointsOnThePixelGrid) {
    const ScreenLayout layout({monitor({0, 0, 1000, 800}, 2)});
    const auto placement = layout.place({10, 20, 100.25, 50}, 0);
    EXPECT_EQ(placement.pixels, (PixelRect{20, 800 - 140, 201, 100}));
    EXPECT_EQ(placement.scale, 2);
}

TEST(ScreenLayout, placesWhatOverhangsByTheScreenItBelongsTo) {
    const ScreenLayout layout({monitor({0, 0, 1000, 800}), monitor({1000, 0, 2000, 1600}, 2)});
    EXPECT_EQ(layout.place({900, 100, 300, 50}, 0).scale, 1);
    EXPECT_EQ(layout.place({900, 100, 300, 50}, 1).scale, 2);
    EXPECT_EQ(layout.place({1100, 100, 100, 50}, 0).pixels, (PixelRect{1200, 1300, 200, 100}));
}

TEST(ScreenLayout, returnsToPixelsWhereItCameFrom) {
    const ScreenLayout layout({monitor({0, 0, 1000, 800}), monitor({-1500, -200, 1500, 900}, 1.5)});
    const auto frame = layout.screen(1).frame;
    EXPECT_EQ(layout.place(frame, 1).pixels, (PixelRect{-1500, -200, 1500, 900}));
}

TEST(ScreenLayout, findsTheMonitorThatHoldsMostOfAWindow) {
    const ScreenLayout layout({monitor({0, 0, 1000, 800}), monitor({1000, 0, 1000, 800})});
    EXPECT_EQ(layout.monitorOf({100, 100, 500, 500}), 0U);
    EXPECT_EQ(layout.monitorOf({900, 100, 500, 500}), 1U);
    EXPECT_EQ(layout.monitorOf({5000, 100, 50, 50}), 1U);
    EXPECT_EQ(ScreenLayout({}).monitorOf({0, 0, 10, 10}), std::nullopt);
}

TEST(ScreenLayout, hasNoScreensWithoutMonitors) {
    const ScreenLayout layout({});
    EXPECT_TRUE(layout.screens().empty());
    EXPECT_TRUE(layout.place({0, 0, 10, 10}, std::nullopt).pixels.isEmpty());
}

TEST(Strut, takesItsEdgeAwayFromTheMonitorThatItLiesOn) {
    auto left = monitor({0, 0, 1000, 800});
    auto right = monitor({1000, 0, 1000, 800});
    const Strut topOfRight{.top = 40, .topStart = 1000, .topEnd = 1999};
    reserve(left, topOfRight, 2000, 800);
    reserve(right, topOfRight, 2000, 800);
    EXPECT_EQ(left.visible, left.frame);
    EXPECT_EQ(right.visible, (PixelRect{1000, 40, 1000, 760}));
}

TEST(Strut, isMeasuredFromTheEdgeOfTheRootWindow) {
    auto shorter = monitor({0, 0, 1000, 600});
    auto taller = monitor({1000, 0, 1000, 800});
    const Strut bottom{.bottom = 230, .bottomStart = 0, .bottomEnd = 999};
    reserve(shorter, bottom, 2000, 800);
    reserve(taller, bottom, 2000, 800);
    EXPECT_EQ(shorter.visible, (PixelRect{0, 0, 1000, 570}));
    EXPECT_EQ(taller.visible, taller.frame);
}

TEST(Strut, ofOppositeEdgesAddUp) {
    auto only = monitor({0, 0, 1000, 800});
    reserve(only, {.left = 60, .leftStart = 0, .leftEnd = 799}, 1000, 800);
    reserve(only, {.right = 40, .rightStart = 0, .rightEnd = 799}, 1000, 800);
    EXPECT_EQ(only.visible, (PixelRect{60, 0, 900, 800}));
}

TEST(Strut, thatLeavesNothingIsIgnored) {
    auto only = monitor({0, 0, 1000, 800});
    reserve(only, {.left = 700, .leftStart = 0, .leftEnd = 799}, 1000, 800);
    reserve(only, {.right = 700, .rightStart = 0, .rightEnd = 799}, 1000, 800);
    EXPECT_EQ(only.visible, (PixelRect{700, 0, 300, 800}));
    reserve(only, {.left = 4000000000U, .leftStart = 0, .leftEnd = 4000000000U}, 1000, 800);
    EXPECT_EQ(only.visible, (PixelRect{700, 0, 300, 800}));
}

} // namespace
} // namespace orvantile::platform::x11
