#include "macos/shell/program/ProgramTest.h"

#include <QDir>

namespace orvantile::test {
namespace {

using ::testing::ElementsAre;

using MacPlatformTest = ShellTest;

TEST_F(MacPlatformTest, preparesTheProcessAsAnAccessoryBeforeTheToolkitLooks) {
    qunsetenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM");

    EXPECT_EQ(platform::prepareProcess(), std::nullopt);
    EXPECT_EQ(qgetenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM"), "1");
    EXPECT_THAT(calls(),
                ElementsAre("[NSApplication sharedApplication]", "[NSApplication setDelegate:<AppDelegate>]",
                            "[NSApplication setActivationPolicy:1]"));
}

TEST(MacPlatformEarlyTest, isMadeWithoutAnAutoreleasePool) {
    desktop::reset();
    (void)platform::prepareProcess();
    auto made = platform::makePlatform();
    EXPECT_TRUE(desktop::hasDelegate());

    const desktop::Pool turn;
    made.reset();
}

TEST_F(MacPlatformTest, looksForPicturesAmongTheResourcesOfTheApplication) {
    (void)platform::prepareProcess();
    const auto all = platform::makePlatform();

    EXPECT_EQ(QDir::searchPaths(QStringLiteral("images")),
              QStringList(QStringLiteral("/Applications/Orvantile.app/Contents/Resources")));
    QDir::setSearchPaths(QStringLiteral("images"), {});
}

TEST_F(MacPlatformTest, hasEveryPeer) {
    (void)platform::prepareProcess();
    const auto all = platform::makePlatform();

    EXPECT_TRUE(all->scheduler && all->defaults && all->appearance && all->workspace && all->accessibility &&
                all->activation && all->screens && all->backdrop && all->panels && all->sounds &&
                all->statusBar && all->updater);
}

} // namespace
} // namespace orvantile::test
