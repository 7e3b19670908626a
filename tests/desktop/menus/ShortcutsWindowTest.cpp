// Programs without a menu bar, which list their shortcuts in a window of their own.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const Application textEditor{
    u"gnome-text-editor"_s, {u"notes.txt"_s}, u"gnome-text-editor"_s, u"Ctrl+0"_s, u"⌃0  Reset Zoom"_s};
const Application gedit{u"gedit"_s, {u"notes.txt"_s}, u"gedit"_s, u"F9"_s, u"F9  Show side panel"_s};

TEST(ShortcutsWindowTest, namesShortcutsOfAGtk4Program) {
    Stage stage;
    stage.start(textEditor);
    stage.startOrvantile();
    stage.awaitCommandsOf(textEditor);
    EXPECT_EQ(stage.fire(u"Ctrl+plus"_s), u"⌃+  Zoom In"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+T"_s), u"⌃T  New document"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+A"_s), u"nothing"_s) << "what this does depends on the field with the focus";
    EXPECT_EQ(stage.fire(u"Ctrl+Home"_s), u"nothing"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+F7"_s), u"nothing"_s);
}

TEST(ShortcutsWindowTest, namesShortcutsOfAGtk3Program) {
    Stage stage;
    stage.start(gedit);
    stage.startOrvantile();
    stage.awaitCommandsOf(gedit);
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  Create a new document in a window"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"nothing"_s);
}

} // namespace
} // namespace orvantile::test
