#include "desktop/compatibility/Chord.h"

#include "desktop/compatibility/Skips.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

QString labelOf(const QString& keys) {
    const auto chord = chordOf(keys);
    return chord ? chord->label : u"none"_s;
}

QString pressedFor(const QString& keys) {
    const auto chord = chordOf(keys);
    return chord ? chord->strokes.join(u" then "_s) : u"none"_s;
}

TEST(ChordTest, readsKeysAsTheToolkitsWriteThem) {
    EXPECT_EQ(labelOf(u"<Primary><Shift>s"_s), u"⌃⇧S"_s);
    EXPECT_EQ(labelOf(u"<Shift><Control>s"_s), u"⌃⇧S"_s);
    EXPECT_EQ(labelOf(u"<Alt>Page_Up"_s), u"⌥⇞"_s);
    EXPECT_EQ(labelOf(u"<Primary>plus"_s), u"⌃+"_s);
    EXPECT_EQ(labelOf(u"Ctrl++"_s), u"⌃+"_s);
    EXPECT_EQ(labelOf(u"Ctrl+Shift+PgDown"_s), u"⌃⇧⇟"_s);
    EXPECT_EQ(labelOf(u"F11"_s), u"F11"_s);
    EXPECT_EQ(labelOf(u"f"_s), u"F"_s);
    EXPECT_EQ(labelOf(u"Ctrl+K, Ctrl+C"_s), u"⌃K ⌃C"_s);
    EXPECT_EQ(labelOf(u"<Hyper>x"_s), u"none"_s);
    EXPECT_EQ(labelOf(u"<Primary>NoSuchKey"_s), u"none"_s);
}

TEST(ChordTest, saysWhatToPress) {
    EXPECT_EQ(pressedFor(u"<Primary><Shift>s"_s), u"Shift+Ctrl+s"_s);
    EXPECT_EQ(pressedFor(u"Ctrl+,"_s), u"Ctrl+,"_s);
    EXPECT_EQ(pressedFor(u"Ctrl+K, Ctrl+C"_s), u"Ctrl+K then Ctrl+C"_s);
}

TEST(SkipsTest, leavesOutWhatEndsTheProgramAndNothingElse) {
    const Program program;
    const auto keys = *chordOf(u"Ctrl+Q"_s);
    EXPECT_EQ(reasonToSkip(program, keys, u"Quit"_s), u"ends the program"_s);
    EXPECT_EQ(reasonToSkip(program, keys, u"Print..."_s), u"looks for printers"_s);
    EXPECT_EQ(reasonToSkip(program, *chordOf(u"<Alt>Tab"_s), u"Next"_s), u"belongs to the window manager"_s);
    EXPECT_EQ(reasonToSkip(program, keys, u"Save"_s), std::nullopt);
    EXPECT_EQ(reasonToSkip(program, keys, u"Close Other Tabs"_s), std::nullopt);
}

} // namespace
} // namespace orvantile::test
