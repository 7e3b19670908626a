// Several applications, their coming and going, keyboards and languages.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;

TEST(SwitchingTest, anotherApplicationWhileAMenuIsOpen) {
    Stage stage;
    const auto first = stage.start(mousepad);
    const auto second = stage.start(geany);
    stage.startOrvantile();
    stage.awaitCommandsOf(geany);
    stage.windows().activate(first.handle);
    stage.awaitCommandsOf(mousepad);
    stage.keys().click(first.frame.topLeft() + QPoint(18, 14));
    stage.windows().awaitMenus(1);
    // The menu holds the keyboard: the switch comes from elsewhere, as from a pager.
    stage.windows().activate(second.handle);
    stage.keys().press(u"Escape"_s);
    stage.windows().awaitMenus(0);
    stage.awaitCommandsOf(geany);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"nothing"_s) << "disabled there";
    stage.windows().activate(first.handle);
    stage.awaitCommandsOf(mousepad);
    EXPECT_EQ(stage.fire(u"Ctrl+R"_s), u"⌃R  Find and Replace..."_s);
}

TEST(SwitchingTest, applicationsThatComeAndGo) {
    Stage stage;
    stage.startOrvantile();
    const auto editor = stage.start(mousepad); // after the program
    stage.awaitCommandsOf(mousepad);
    stage.start(geany);
    stage.awaitCommandsOf(geany);
    stage.process(geany).signal(SIGKILL);
    ASSERT_TRUE(stage.process(geany).awaitExit());
    stage.windows().activate(editor.handle);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
    stage.start(geany);
    EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre());
}

TEST(SwitchingTest, passwordsShowNothing) {
    Stage stage;
    const auto editor = stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    const Application zenity{u"zenity"_s, {u"--password"_s}, u"zenity"_s, {}, {}};
    EXPECT_THAT(stage.shownBy(mousepad,
                              [&] {
                                  const auto dialog = stage.start(zenity);
                                  stage.keys().type(u"correct horse battery staple"_s);
                                  stage.keys().press(u"Ctrl+A"_s);
                                  stage.keys().press(u"Return"_s);
                                  stage.windows().awaitGone(dialog.handle);
                                  stage.windows().activate(editor.handle);
                              }),
                ElementsAre());
}

TEST(KeyboardTest, german) {
    Stage stage({.keyboardLayout = u"de"_s});
    stage.start(geany);
    stage.startOrvantile();
    stage.awaitCommandsOf(geany);
    EXPECT_EQ(stage.fire(u"Ctrl+D"_s), u"⌃D  Duplicate Line or Selection"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s) << "Z and Y have changed places";
    EXPECT_EQ(stage.fire(u"Ctrl+Y"_s), u"⌃Y  Redo"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+plus"_s), u"⌃+  Zoom In"_s) << "a key of its own there";
    EXPECT_THAT(stage.shownBy(geany, [&] { stage.keys().type(u"äöüß@€{[]}"_s); }), ElementsAre())
        << "the third level is no Alt";
}

TEST(KeyboardTest, frenchAzerty) {
    Stage stage({.keyboardLayout = u"fr"_s});
    stage.start(geany);
    stage.startOrvantile();
    stage.awaitCommandsOf(geany);
    EXPECT_EQ(stage.fire(u"Ctrl+D"_s), u"⌃D  Duplicate Line or Selection"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+comma"_s), u"⌃,  Go to Previous Marker"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+minus"_s), u"⌃-  Zoom Out"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+0"_s), u"⌃0  Normal Size"_s) << "digits are shifted there";
}

TEST(KeyboardTest, russianBesideAmerican) {
    Stage stage({.keyboardLayout = u"us,ru"_s, .keyboardOptions = u"grp:alt_shift_toggle"_s});
    stage.start(geany);
    stage.startOrvantile();
    stage.awaitCommandsOf(geany);
    stage.keys().lockLayout(1);
    EXPECT_EQ(stage.fire(u"Ctrl+D"_s), u"⌃D  Duplicate Line or Selection"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s);
    EXPECT_THAT(stage.shownBy(geany, [&] { stage.keys().type(u"съешь ещё"_s); }), ElementsAre());
}

TEST(LanguageTest, germanTitlesAndAccelerators) {
    Stage stage({.locale = u"de_DE.UTF-8"_s});
    auto editor = mousepad;
    editor.fenceLabel = u"⌃A  Alles auswählen"_s;
    stage.start(editor);
    stage.startOrvantile();
    stage.awaitCommandsOf(editor);
    EXPECT_EQ(stage.fire(u"Ctrl+I"_s), u"⌃I  Einzug erhöhen"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Rückgängig"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+Delete"_s), u"⌃⇧⌦  Zeile löschen"_s);
}

} // namespace
} // namespace orvantile::test
