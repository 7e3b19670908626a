// Programs of both window systems side by side, with and without panels of the compositor.

#include "support/QtPrinting.h"
#include "support/desktop/HudWatcher.h"
#include "support/wayland/WaylandStage.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::IsEmpty;

const WaylandApplication mousepad{
    u"mousepad"_s, {u"--disable-server"_s, u"notes.txt"_s}, u"Mousepad"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};
const WaylandApplication geany{
    u"geany"_s, {u"-i"_s, u"notes.txt"_s}, u"Geany"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};

/// Counts what is shown for one press.
int shownFor(WaylandStage& stage, const QString& combination) {
    int count = stage.fire(combination) == u"nothing"_s ? 0 : 1;
    while (stage.huds().awaitNext(QDeadlineTimer(300))) {
        ++count;
    }
    return count;
}

TEST(Xwayland, programsOfBothKindsAreNamedOnceForEachKey) {
    WaylandStage stage({.xwayland = true});
    stage.start(mousepad);
    stage.session().setVariable(u"GDK_BACKEND"_s, u"x11"_s);
    stage.start(geany);
    stage.startOrvantile();
    EXPECT_THAT(stage.awaitCommandsOf(geany), IsEmpty());
    EXPECT_EQ(shownFor(stage, u"Ctrl+A"_s), 1) << "of the X server and of the application itself";
    stage.focus(u"app_id=mousepad"_s, mousepad.title);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), IsEmpty());
    EXPECT_EQ(shownFor(stage, u"Ctrl+A"_s), 1);
    stage.focus(u"class=(?i)geany"_s, geany.title);
    EXPECT_THAT(stage.awaitCommandsOf(geany), IsEmpty());
    EXPECT_EQ(shownFor(stage, u"Ctrl+F"_s), 1);
}

TEST(Xwayland, withoutPanelsOfTheCompositorItShowsThoseOfItsXServer) {
    WaylandStage stage({.xwayland = true});
    stage.start(mousepad);
    stage.session().setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s); // as on a compositor without
    HudWatcher panels(stage.session().environment().value(u"DISPLAY"_s));
    stage.startOrvantile();
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), IsEmpty());
    panels.takeAll();
    EXPECT_EQ(stage.fire(u"Ctrl+A"_s), u"⌃A  Select All"_s) << "a program that runs on Wayland itself";
    const auto panel = panels.awaitNext();
    ASSERT_TRUE(panel);
    EXPECT_EQ(panel->label, u"⌃A  Select All"_s);
}

TEST(Xwayland, namesGoOnWithAnotherAccessibilityBus) {
    WaylandStage stage({.xwayland = true});
    stage.session().setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s); // its panels can be watched without the bus
    HudWatcher panels(stage.session().environment().value(u"DISPLAY"_s));
    stage.startOrvantile();
    stage.session().stopAccessibility();
    stage.session().startAccessibility();
    stage.start(geany);
    const QDeadlineTimer deadline(patience * 4);
    std::optional<ShownHud> shown;
    while (!shown && !deadline.hasExpired()) {
        stage.keys().press(geany.fenceKeys);
        shown = panels.awaitNext(QDeadlineTimer(300));
    }
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->label, geany.fenceLabel);
}

} // namespace
} // namespace orvantile::test
