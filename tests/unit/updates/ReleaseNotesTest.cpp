#include "platform/linux/desktop/updates/ReleaseNotes.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {

void PrintTo(const NotesParagraph& paragraph, std::ostream* out) {
    *out << static_cast<int>(paragraph.kind) << ":\"" << paragraph.text.toStdString() << '"';
}

namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Kind = NotesParagraph::Kind;

NotesParagraph heading(const QString& text) {
    return {Kind::heading, text};
}

NotesParagraph text(const QString& text) {
    return {Kind::text, text};
}

NotesParagraph bullet(const QString& text) {
    return {Kind::bullet, text};
}

TEST(ReleaseNotesTest, keepsHeadingsParagraphsAndItems) {
    EXPECT_THAT(readReleaseNotes(u"<h2>New &amp; better</h2><p>Faster.<br>Much.</p><ul><li>One</li><li>Two "
                                 u"<b>bold</b></li></ul>"_s,
                                 NotesFormat::html),
                ElementsAre(heading(u"New & better"_s), text(u"Faster."_s), text(u"Much."_s),
                            bullet(u"One"_s), bullet(u"Two bold"_s)));
    EXPECT_THAT(readReleaseNotes(u"## New\n\nFaster.\n\n- One\n- Two\n"_s, NotesFormat::markdown),
                ElementsAre(heading(u"New"_s), text(u"Faster."_s), bullet(u"One"_s), bullet(u"Two"_s)));
    EXPECT_THAT(readReleaseNotes(u"First <b>line</b>\n\nSecond"_s, NotesFormat::plain),
                ElementsAre(text(u"First <b>line</b>"_s), text(u"Second"_s)));
}

TEST(ReleaseNotesTest, dropsWhatCouldLoadRunOrMislead) {
    EXPECT_THAT(readReleaseNotes(u"<style>p{font-size:900px}</style><script>alert('<p>')</script>"
                                 u"<p style='font-size:900px'>A<img src='file:///etc/passwd'>B "
                                 u"<a href='https://evil.example'>C</a></p><!-- <p>hidden</p> -->"
                                 u"<table><tr><td colspan=99999999>D</td></tr></table>"_s,
                                 NotesFormat::html),
                ElementsAre(text(u"A B C"_s), text(u"D"_s)));
    EXPECT_THAT(readReleaseNotes(u"a\u202Eb\u200Bc\u0007d"_s, NotesFormat::plain),
                ElementsAre(text(u"abc d"_s)));
}

TEST(ReleaseNotesTest, readsBrokenMarkupAsText) {
    EXPECT_THAT(readReleaseNotes(u"1 < 2 <p"_s, NotesFormat::html), ElementsAre(text(u"1 < 2 <p"_s)));
    EXPECT_THAT(readReleaseNotes({}, NotesFormat::html), IsEmpty());
    EXPECT_THAT(readReleaseNotes(u"<p> </p><ul><li></li></ul>"_s, NotesFormat::html), IsEmpty());
    EXPECT_THAT(readReleaseNotes(u"<script>never closed"_s, NotesFormat::html), IsEmpty());
}

TEST(ReleaseNotesTest, boundsWhatItReads) {
    EXPECT_EQ(readReleaseNotes(u"<li>x</li>"_s.repeated(100'000), NotesFormat::html).size(), 400U);
    EXPECT_EQ(readReleaseNotes(u"x\n"_s.repeated(100'000), NotesFormat::plain).size(), 400U);
    const auto deep = readReleaseNotes(u"<ul>"_s.repeated(100'000) + u"<li>x"_s, NotesFormat::html);
    EXPECT_THAT(deep, IsEmpty());
    const auto nested = readReleaseNotes(u"<ul><li>"_s.repeated(2000) + u"x"_s, NotesFormat::html);
    EXPECT_LE(nested.size(), 400U);
}

} // namespace
} // namespace orvantile::platform::desktop
