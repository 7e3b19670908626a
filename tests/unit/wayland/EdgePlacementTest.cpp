#include "platform/linux/wayland/EdgePlacement.h"

#include <gmock/gmock.h>

namespace orvantile::platform::wayland {
namespace {

constexpr Rect screen{0, 0, 1280, 800};

TEST(EdgePlacement, keepsTheDistanceToTheNearerEdges) {
    const auto topLeft = placeAtEdges({24, 800 - 24 - 60, 200, 60}, screen);
    EXPECT_EQ(topLeft, (EdgePlacement{Side::near, Side::near, 24, 24, {200, 60}, {0, 0}}));
    const auto bottomRight = placeAtEdges({1280 - 24 - 200, 24, 200, 60}, screen);
    EXPECT_EQ(bottomRight, (EdgePlacement{Side::far, Side::far, 24, 24, {200, 60}, {0, 0}}));
}

TEST(EdgePlacement, centresWhatIsEquallyFarFromBothEdges) {
    const auto middle = placeAtEdges({540, 370, 200, 60}, screen);
    EXPECT_EQ(middle, (EdgePlacement{Side::middle, Side::middle, 0, 0, {200, 60}, {0, 0}}));
}

TEST(EdgePlacement, growsToWholePointsAroundFractions) {
    const auto placed = placeAtEdges({100.25, 24.5, 200.5, 60}, screen);
    EXPECT_EQ(placed.horizontalMargin, 100);
    EXPECT_EQ(placed.verticalMargin, 24);
    EXPECT_EQ(placed.size, QSize(201, 61));
    EXPECT_EQ(placed.origin, QPointF(-0.25, -0.5));
    const auto centred = placeAtEdges({539.75, 24, 200.5, 60}, screen);
    EXPECT_EQ(centred.horizontal, Side::middle);
    EXPECT_EQ(centred.size.width(), 202);
    EXPECT_EQ(centred.origin.x(), -0.75);
}

TEST(EdgePlacement, leavesOutWhatOverhangs) {
    const auto wide = placeAtEdges({-360, 24, 2000, 60}, screen);
    EXPECT_EQ(wide, (EdgePlacement{Side::middle, Side::far, 0, 24, {1280, 60}, {360, 0}}));
    const auto corner = placeAtEdges({24, 24, 2000, 60}, screen);
    EXPECT_EQ(corner, (EdgePlacement{Side::near, Side::far, 24, 24, {1256, 60}, {0, 0}}));
}

TEST(EdgePlacement, isEmptyOffTheScreen) {
    EXPECT_TRUE(placeAtEdges({-500, 24, 200, 60}, screen).size.isEmpty());
    EXPECT_TRUE(placeAtEdges({24, 900, 200, 60}, screen).size.isEmpty());
    EXPECT_TRUE(placeAtEdges({24, 24, 200, 60}, {}).size.isEmpty());
}

TEST(EdgePlacement, countsFromItsOwnOutput) {
    const auto placed = placeAtEdges({1304, 100, 200, 60}, {1280, 76, 1000, 700});
    EXPECT_EQ(placed, (EdgePlacement{Side::near, Side::far, 24, 24, {200, 60}, {0, 0}}));
}

} // namespace
} // namespace orvantile::platform::wayland
