// What breaks around the program, and what it does about it.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <chrono>
#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(FaultsTest, stoppedApplicationDelaysNoOther) {
    Stage stage;
    const auto hung = stage.start(geany);
    const auto editor = stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    stage.process(geany).signal(SIGSTOP);
    stage.windows().activate(hung.handle); // and its commands are asked for, in vain
    stage.windows().activate(editor.handle);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
    const auto pressed = std::chrono::steady_clock::now();
    stage.keys().press(u"Ctrl+I"_s);
    const auto hud = stage.huds().awaitNext();
    ASSERT_TRUE(hud);
    EXPECT_EQ(hud->label, u"⌃I  Increase Indent"_s);
    EXPECT_LT(hud->time - pressed, std::chrono::milliseconds(250)) << "generous on a busy machine";
    stage.process(geany).signal(SIGCONT);
    stage.huds().awaitHidden();
    stage.windows().activate(hung.handle);
    EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre()) << "it answers again";
}

TEST(FaultsTest, accessibilityBusDiesAndComesBack) {
    Stage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    stage.session().stopAccessibility();
    EXPECT_EQ(stage.fire(u"Ctrl+I"_s), u"nothing"_s);
    EXPECT_TRUE(stage.orvantile().isRunning());
    stage.session().startAccessibility();
    // Toolkits join the bus when they start: what runs already stays silent.
    stage.start(geany);
    EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre());
}

TEST(FaultsTest, withoutABusItRunsOnAndShowsNothing) {
    Stage stage({.sessionBus = false, .accessibility = false});
    stage.start(mousepad);
    stage.startOrvantile();
    EXPECT_EQ(stage.fire(u"Ctrl+A"_s), u"nothing"_s);
    EXPECT_TRUE(stage.orvantile().isRunning());
}

TEST(FaultsTest, withoutAnXServerItSaysSoAndEndsWithOne) {
    PrivateSession session;
    session.setVariable(u"DISPLAY"_s, u":4711"_s);
    const auto orvantile = session.start(QStringLiteral(ORVANTILE_EXECUTABLE));
    EXPECT_EQ(orvantile->awaitExit(), 1);
    EXPECT_THAT(orvantile->standardError().toStdString(),
                HasSubstr("orvantile: cannot connect to the X server"));
}

TEST(FaultsTest, lossOfTheXServerEndsItCleanly) {
    Stage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    stage.session().stopServer();
    EXPECT_EQ(stage.orvantile().awaitExit(), 0);
}

} // namespace
} // namespace orvantile::test
