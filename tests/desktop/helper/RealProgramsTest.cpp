// Editors as the distribution packages them.

#include "desktop/helper/HelperStage.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const Application featherpad{
    u"featherpad"_s, {u"--standalone"_s, u"notes.txt"_s}, u"featherpad"_s, u"Ctrl+N"_s, u"⌃N  New"_s};
const Application focuswriter{u"focuswriter"_s, {}, u"focuswriter"_s, u"Ctrl+N"_s, u"⌃N  New"_s};

TEST(FeatherpadTest, namesShortcutsOfAQt5Program) {
    Stage stage;
    loadHelper(stage.session());
    stage.start(featherpad);
    stage.startOrvantile();
    stage.awaitCommandsOf(featherpad);
    EXPECT_EQ(stage.fire(u"Ctrl+S"_s), u"nothing"_s) << "there is nothing to save";
    stage.keys().type(u"x"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+S"_s), u"⌃⇧S  Save As"_s);
}

TEST(FocuswriterTest, namesShortcutsOfAQt6Program) {
    Stage stage;
    loadHelper(stage.session());
    stage.start(focuswriter);
    stage.startOrvantile();
    stage.awaitCommandsOf(focuswriter);
    EXPECT_EQ(stage.fire(u"Ctrl+F"_s), u"⌃F  Find..."_s);
}

} // namespace
} // namespace orvantile::test
