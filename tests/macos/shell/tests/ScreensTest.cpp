#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/desktop/MacScreens.h"

namespace orvantile::test {
namespace {

using platform::Rect;
using platform::Screen;
using platform::macos::MacScreens;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using MacScreensTest = ShellTest;

const Screen builtIn{Rect{0, 0, 1440, 900}, Rect{0, 50, 1440, 825}, 2};
const Screen external{Rect{-1920, 120, 1920, 1080}, Rect{-1920, 120, 1920, 1055}, 1};

void connectBoth(bool hasMain) {
    desktop::setScreens(
        {{0, 0, 1440, 900, 0, 50, 1440, 825, 2}, {-1920, 120, 1920, 1080, -1920, 120, 1920, 1055, 1}},
        hasMain);
}

TEST_F(MacScreensTest, givesTheMainScreenWithItsVisibleFrameAndScale) {
    connectBoth(true);

    EXPECT_EQ(MacScreens().mainScreen(), builtIn);
}

TEST_F(MacScreensTest, listsAllScreensInTheOrderOfTheSystem) {
    connectBoth(true);

    EXPECT_THAT(MacScreens().screens(), ElementsAre(builtIn, external));
}

TEST_F(MacScreensTest, hasNoMainScreenWhileDisplaysAreReconfigured) {
    connectBoth(false);

    EXPECT_EQ(MacScreens().mainScreen(), std::nullopt);
    EXPECT_THAT(MacScreens().screens(), ElementsAre(builtIn, external));
}

TEST_F(MacScreensTest, listsNoScreensWhenThereAreNone) {
    desktop::setScreens({});

    EXPECT_THAT(MacScreens().screens(), IsEmpty());
}

} // namespace
} // namespace orvantile::test
