#include "platform/macos/panel/ScaleAt.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using platform::Rect;
using platform::Screen;
using platform::macos::scaleAt;

class TwoScreens final : public platform::Screens {
public:
    [[nodiscard]] std::optional<Screen> mainScreen() const override {
        return hasMain ? std::optional(all.front()) : std::nullopt;
    }

    [[nodiscard]] std::vector<Screen> screens() const override { return all; }

    bool hasMain = true;
    std::vector<Screen> all{{{0, 0, 1000, 800}, {}, 2}, {{1000, 0, 1000, 800}, {}, 1}};
};

TEST(ScaleAtTest, isThatOfTheScreenWhichShowsMost) {
    const TwoScreens screens;

    EXPECT_EQ(scaleAt({100, 100, 200, 60}, screens), 2);
    EXPECT_EQ(scaleAt({1100, 100, 200, 60}, screens), 1);
    EXPECT_EQ(scaleAt({850, 100, 200, 60}, screens), 2);
    EXPECT_EQ(scaleAt({950, 100, 200, 60}, screens), 1);
}

TEST(ScaleAtTest, isThatOfTheMainScreenForWhatNoScreenShows) {
    const TwoScreens screens;

    EXPECT_EQ(scaleAt({100, 5000, 200, 60}, screens), 2);
    EXPECT_EQ(scaleAt({100, 900, 200, 60}, screens), 2);
}

TEST(ScaleAtTest, isOneWithoutAnyScreen) {
    TwoScreens screens;
    screens.hasMain = false;
    screens.all.clear();

    EXPECT_EQ(scaleAt({0, 0, 200, 60}, screens), 1);
}

} // namespace
} // namespace orvantile::test
