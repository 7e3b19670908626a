#include "platform/linux/wayland/OutputLayout.h"

#include <gmock/gmock.h>

namespace orvantile::platform::wayland {
namespace {

TEST(OutputLayout, hasItsOriginInTheLowerLeftCornerOfTheFirstOutput) {
    const OutputLayout layout(
        {{{100, 50, 1280, 800}, {1280, 800}, 1}, {{1380, 0, 960, 540}, {1920, 1080}, 2}});
    EXPECT_EQ(layout.screen(0), (Screen{{0, 0, 1280, 800}, {0, 0, 1280, 800}, 1}));
    EXPECT_EQ(layout.screen(1), (Screen{{1280, 310, 960, 540}, {1280, 310, 960, 540}, 2}));
    EXPECT_EQ(layout.screens().size(), 2U);
}

TEST(OutputLayout, tellsFractionalScalesFromRoundedSizes) {
    EXPECT_EQ((OutputGeometry{{0, 0, 853, 533}, {1280, 800}, 2}.scale()), 1.5);
    EXPECT_EQ((OutputGeometry{{0, 0, 1536, 864}, {1920, 1080}, 2}.scale()), 1.25);
    EXPECT_EQ((OutputGeometry{{0, 0, 1280, 800}, {}, 2}.scale()), 2) << "no mode is known";
}

} // namespace
} // namespace orvantile::platform::wayland
