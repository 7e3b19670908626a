#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/updates/MacUpdater.h"

namespace orvantile::test {
namespace {

using platform::macos::MacUpdater;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

class MacUpdaterTest : public ShellTest {
protected:
    MacUpdater updater;
};

TEST_F(MacUpdaterTest, loadsSparkleFromTheFrameworksFolderAndStartsItWithoutDelegates) {
    const auto controller = updater.createController(true);

    EXPECT_THAT(calls(),
                ElementsAre("[NSBundle mainBundle]", "[NSBundle privateFrameworksPath]",
                            "[NSBundle bundleWithPath:"
                            "\"/Applications/Orvantile.app/Contents/Frameworks/Sparkle.framework\"]",
                            "[NSBundle load]",
                            "[SPUStandardUpdaterController initWithStartingUpdater:YES updaterDelegate:nil "
                            "userDriverDelegate:nil]"));
}

TEST_F(MacUpdaterTest, leavesTheStartToTheCaller) {
    const auto controller = updater.createController(false);

    EXPECT_THAT(calls(), Contains(HasSubstr("initWithStartingUpdater:NO")));
}

TEST_F(MacUpdaterTest, asksTheOneControllerForEachCheckWithoutASender) {
    const auto controller = updater.createController(true);
    forgetCalls();
    controller->checkForUpdates();
    controller->checkForUpdates();

    EXPECT_THAT(calls(), ElementsAre("[SPUStandardUpdaterController checkForUpdates:nil]",
                                     "[SPUStandardUpdaterController checkForUpdates:nil]"));
}

TEST_F(MacUpdaterTest, doesNothingWithoutTheFramework) {
    desktop::setSparkle(desktop::Sparkle::missing);
    updater.createController(true)->checkForUpdates();

    EXPECT_THAT(calls(), Not(Contains(HasSubstr("SPUStandardUpdaterController"))));
}

} // namespace
} // namespace orvantile::test
