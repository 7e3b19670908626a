#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/application/MacApplication.h"

namespace orvantile::test {
namespace {

using platform::macos::MacApplication;
using ::testing::ElementsAre;

class MacApplicationTest : public ShellTest {
protected:
    ~MacApplicationTest() override {
        MacApplication::onLaunched({});
        MacApplication::onReopened({});
    }
};

TEST_F(MacApplicationTest, setsTheDelegateAndThenTheAccessoryPolicy) {
    MacApplication::prepare();

    EXPECT_THAT(calls(),
                ElementsAre("[NSApplication sharedApplication]", "[NSApplication setDelegate:<AppDelegate>]",
                            "[NSApplication setActivationPolicy:1]"));
}

TEST_F(MacApplicationTest, keepsTheDelegateThatTheApplicationHoldsWeakly) {
    {
        const desktop::Pool turn;
        MacApplication::prepare();
    }
    EXPECT_TRUE(desktop::hasDelegate());
}

TEST_F(MacApplicationTest, tellsOfTheEndOfLaunching) {
    MacApplication::prepare();
    int launched = 0;
    MacApplication::onLaunched([&] { ++launched; });
    desktop::finishLaunching();

    EXPECT_EQ(launched, 1);
}

TEST_F(MacApplicationTest, tellsOfEverySecondLaunchAndAnswersThatItIsDealtWith) {
    MacApplication::prepare();
    std::vector<bool> reopened;
    MacApplication::onReopened([&](bool visible) { reopened.push_back(visible); });

    EXPECT_TRUE(desktop::launchAgain(false));
    EXPECT_TRUE(desktop::launchAgain(true));
    EXPECT_THAT(reopened, ElementsAre(false, true));
}

TEST_F(MacApplicationTest, takesMessagesThatNobodyWaitsFor) {
    MacApplication::prepare();
    desktop::finishLaunching();

    EXPECT_TRUE(desktop::launchAgain(false));
}

} // namespace
} // namespace orvantile::test
