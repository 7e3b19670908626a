#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/application/MacApplication.h"
#include "platform/macos/desktop/MacAppearance.h"

#include <optional>

namespace orvantile::test {
namespace {

using platform::macos::MacAppearance;
using platform::macos::MacApplication;
using ::testing::ElementsAre;

class MacAppearanceTest : public ShellTest {
protected:
    MacAppearanceTest() {
        MacApplication::prepare();
        appearance.emplace();
    }

    std::optional<MacAppearance> appearance;
    int changes = 0;
};

TEST_F(MacAppearanceTest, isDarkWhenTheEffectiveAppearanceMatchesDarkAquaBest) {
    desktop::setDark(true);
    EXPECT_TRUE(appearance->isDark());

    desktop::setDark(false);
    EXPECT_FALSE(appearance->isDark());
}

TEST_F(MacAppearanceTest, isNotDarkWhenNothingMatches) {
    desktop::setDark(std::nullopt);

    EXPECT_FALSE(appearance->isDark());
}

TEST_F(MacAppearanceTest, asksTheApplicationObjectForItsAppearance) {
    forgetCalls();
    (void)appearance->isDark();

    EXPECT_THAT(calls(), ElementsAre("[NSApplication effectiveAppearance]",
                                     "[NSAppearance bestMatchFromAppearancesWithNames:<NSArray>]"));
}

TEST_F(MacAppearanceTest, tellsEachOfItsObserversOfChanges) {
    const auto first = appearance->observeChanges([this] { ++changes; });
    const auto second = appearance->observeChanges([this] { ++changes; });
    desktop::setDark(true);
    EXPECT_EQ(changes, 2);

    desktop::setDark(false);
    EXPECT_EQ(changes, 4);
}

TEST_F(MacAppearanceTest, showsTheNewStateToItsObservers) {
    bool seen = false;
    const auto token = appearance->observeChanges([&] { seen = appearance->isDark(); });
    desktop::setDark(true);

    EXPECT_TRUE(seen);
}

TEST_F(MacAppearanceTest, forgetsAnObserverWhoseTokenIsReleased) {
    auto token = appearance->observeChanges([this] { ++changes; });
    token.reset();
    desktop::setDark(true);

    EXPECT_EQ(changes, 0);
}

TEST_F(MacAppearanceTest, observesOnceHoweverManyAskAndNoLongerThanItLives) {
    const auto first = appearance->observeChanges([] {});
    const auto second = appearance->observeChanges([] {});
    EXPECT_EQ(desktop::appearanceObservers(), 1U);

    appearance.reset();
    EXPECT_EQ(desktop::appearanceObservers(), 0U);
}

using MacAppearanceDeathTest = ShellTest;

TEST_F(MacAppearanceDeathTest, stopsTheProgramWithoutAnApplicationObject) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    desktop::removeApplicationObject();

    EXPECT_DEATH({ const MacAppearance early; }, "no application object");
}

} // namespace
} // namespace orvantile::test
