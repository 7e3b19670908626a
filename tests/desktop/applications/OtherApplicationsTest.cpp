// One table of shortcuts for each of several applications.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <QImage>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

TEST(GeanyTest, namesShortcuts) {
    Stage stage;
    stage.start(geany);
    stage.startOrvantile();
    stage.awaitCommandsOf(geany);
    EXPECT_EQ(stage.fire(u"Ctrl+D"_s), u"⌃D  Duplicate Line or Selection"_s) << "in a submenu";
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Y"_s), u"⌃Y  Redo"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+period"_s), u"⌃.  Go to Next Marker"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+comma"_s), u"⌃,  Go to Previous Marker"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+plus"_s), u"⌃+  Zoom In"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+minus"_s), u"⌃-  Zoom Out"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+0"_s), u"⌃0  Normal Size"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+M"_s), u"⌃⇧M  Mark All"_s);
    EXPECT_EQ(stage.fire(u"Alt+Shift+L"_s), u"⌥⇧L  Select Current Line(s)"_s);
    EXPECT_EQ(stage.fire(u"F11"_s), u"F11  Fullscreen"_s);
    EXPECT_EQ(stage.fire(u"F11"_s), u"F11  Fullscreen"_s);
}

TEST(WriterTest, namesShortcuts) {
    Stage stage;
    stage.start(writer);
    stage.startOrvantile();
    stage.awaitCommandsOf(writer);
    EXPECT_EQ(stage.fire(u"Ctrl+B"_s), u"⌃B  Bold"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+E"_s), u"⌃E  Centered"_s) << "in a submenu, and not its neighbour's mnemonic";
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+P"_s), u"⌃⇧P  Superscript"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+1"_s), u"⌃1  Heading 1"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+minus"_s), u"⌃-  Insert soft Hyphen"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+L"_s), u"⌃L  Left"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+F8"_s), u"⌃F8  Field Shadings"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Return"_s), u"⌃⏎  Page Break"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+H"_s), u"⌃H  Find and Replace..."_s);
}

TEST(GimpTest, namesShortcuts) {
    Stage stage;
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::white);
    ASSERT_TRUE(picture.save(stage.session().home() + u"/picture.png"_s));
    stage.start(gimp);
    stage.startOrvantile();
    stage.awaitCommandsOf(gimp);
    EXPECT_EQ(stage.fire(u"Ctrl+I"_s), u"⌃I  Invert"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+A"_s), u"⌃A  All"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+A"_s), u"⌃⇧A  None"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+comma"_s), u"⌃,  Fill with FG Color"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo Fill with Foreground Color"_s)
        << "the title that it has by then";
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+R"_s), u"⌃⇧R  Show Rulers"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+J"_s), u"⌃⇧J  Fit Image in Window"_s) << "in a submenu";
    EXPECT_EQ(stage.fire(u"F11"_s), u"F11  Fullscreen"_s);
    EXPECT_EQ(stage.fire(u"F11"_s), u"F11  Fullscreen"_s);
}

/// This file manager fills a menu when it is opened for the first time.
TEST(ThunarTest, namesShortcutsOfMenusThatHaveBeenOpened) {
    Stage stage;
    const auto window = stage.start(thunar);
    stage.startOrvantile();
    stage.keys().click(window.frame.topLeft() + QPoint(18, 14)); // File
    stage.windows().awaitMenus(1);
    for (int menu = 0; menu < 5; ++menu) {
        stage.keys().press(u"Right"_s);
        stage.windows().awaitMenus(1);
    }
    stage.keys().press(u"Escape"_s);
    stage.keys().press(u"Escape"_s);
    stage.windows().awaitMenus(0);
    stage.awaitCommandsOf(thunar);
    EXPECT_EQ(stage.fire(u"Ctrl+H"_s), u"⌃H  Show Hidden Files"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+R"_s), u"⌃R  Reload"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+1"_s), u"⌃1  Icon View"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+2"_s), u"⌃2  List View"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+3"_s), u"⌃3  Compact View"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+E"_s), u"⌃E  Tree"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+B"_s), u"⌃B  Shortcuts"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+KP_Add"_s), u"⌃+  Zoom In"_s) << "on the keypad";
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+N"_s), u"⌃⇧N  Create Folder..."_s);
}

} // namespace
} // namespace orvantile::test
