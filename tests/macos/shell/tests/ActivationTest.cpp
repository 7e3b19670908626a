#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/application/MacActivation.h"
#include "platform/macos/application/MacApplication.h"

namespace orvantile::test {
namespace {

using platform::macos::MacActivation;
using platform::macos::MacApplication;
using ::testing::ElementsAre;

using MacActivationTest = ShellTest;

TEST_F(MacActivationTest, activatesTheProgramAndThenMakesTheWindowKeyAndFrontmost) {
    MacApplication::prepare();
    const auto window = reinterpret_cast<std::uintptr_t>(desktop::makeToolkitView());
    forgetCalls();
    MacActivation().bringToFront(window);

    EXPECT_THAT(calls(), ElementsAre("[NSView window]", "[NSWindow styleMask]", "[NSWindow setStyleMask:7]",
                                     "[NSWindow setReleasedWhenClosed:NO]",
                                     "[NSApplication activateIgnoringOtherApps:YES]",
                                     "[NSWindow makeKeyAndOrderFront:nil]"));
}

TEST_F(MacActivationTest, leavesTheStyleOfAWindowAloneThatHasItAlready) {
    MacApplication::prepare();
    const auto window = reinterpret_cast<std::uintptr_t>(desktop::makeToolkitView());
    MacActivation().bringToFront(window);
    forgetCalls();
    MacActivation().bringToFront(window);

    EXPECT_THAT(calls(), ElementsAre("[NSView window]", "[NSWindow styleMask]",
                                     "[NSApplication activateIgnoringOtherApps:YES]",
                                     "[NSWindow makeKeyAndOrderFront:nil]"));
}

TEST_F(MacActivationTest, leavesTheViewToItsOwner) {
    MacApplication::prepare();
    const auto window = reinterpret_cast<std::uintptr_t>(desktop::makeToolkitView());
    const auto before = desktop::liveObjects();
    for (int round = 0; round < 3; ++round) {
        const desktop::Pool turn;
        MacActivation().bringToFront(window);
    }

    EXPECT_EQ(desktop::liveObjects(), before);
}

using MacActivationDeathTest = ShellTest;

TEST_F(MacActivationDeathTest, stopsTheProgramWithoutAnApplicationObject) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    desktop::removeApplicationObject();

    EXPECT_DEATH(MacActivation().bringToFront(0), "no application object");
}

} // namespace
} // namespace orvantile::test
