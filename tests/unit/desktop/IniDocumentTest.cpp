#include "platform/linux/desktop/IniDocument.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

QByteArray edited(const QByteArray& bytes, const QByteArray& key, const QByteArray& text) {
    IniDocument document(bytes, "General");
    document.set(key, text);
    return document.bytes();
}

TEST(IniDocumentTest, readsTheKeysOfItsSection) {
    const IniDocument document("outside=0\n[General]\na=1\n b = two words \n[Other]\na=3\n[General]\nc=4",
                               "General");
    EXPECT_THAT(document.values(), ElementsAre(Pair("a", "1"), Pair("b", "two words"), Pair("c", "4")));
}

TEST(IniDocumentTest, readsTheLastOfEqualKeys) {
    EXPECT_THAT(IniDocument("[General]\na=1\na=2\n", "General").values(), ElementsAre(Pair("a", "2")));
}

TEST(IniDocumentTest, ignoresCommentsAndWhatIsNoAssignment) {
    EXPECT_THAT(IniDocument("[General]\n#a=1\n; b=2\nnonsense\n=5\n\n[half\n", "General").values(),
                IsEmpty());
}

TEST(IniDocumentTest, readsPastAByteOrderMarkAndOtherLineEnds) {
    EXPECT_THAT(IniDocument("\xEF\xBB\xBF[General]\r\na=1\r\n", "General").values(),
                ElementsAre(Pair("a", "1")));
}

TEST(IniDocumentTest, keepsEveryByteItDoesNotChange) {
    const QByteArray bytes("# mine\n\n[Other]\nx = \xFF\xFE\n[General]\r\n  a =  1 \r\n;end\nb=\n[Last]\nz");
    const IniDocument document(bytes, "General");
    EXPECT_EQ(document.bytes(), bytes);
    EXPECT_EQ(edited("# mine\n[General]\r\n  a =  1 \r\n;end\n[Last]\nz", "a", "2"),
              "# mine\n[General]\r\n  a =  2 \r\n;end\n[Last]\nz");
}

TEST(IniDocumentTest, changesTheLineThatIsRead) {
    EXPECT_EQ(edited("[General]\na=1\na=2\n[Other]\na=3\n", "a", "9"), "[General]\na=1\na=9\n[Other]\na=3\n");
    EXPECT_EQ(edited("[General]\na=\n", "a", "9"), "[General]\na=9\n");
}

TEST(IniDocumentTest, addsAKeyAtTheEndOfItsSection) {
    EXPECT_EQ(edited("[General]\na=1\n\n[Other]\nb=2\n", "b", "3"), "[General]\na=1\nb=3\n\n[Other]\nb=2\n");
    EXPECT_EQ(edited("[General]", "b", "3"), "[General]\nb=3\n");
    EXPECT_EQ(edited("[General]\r\na=1\r\n", "b", "3"), "[General]\r\na=1\r\nb=3\r\n");
}

TEST(IniDocumentTest, addsItsSectionAtTheEnd) {
    EXPECT_EQ(edited("", "a", "1"), "[General]\na=1\n");
    EXPECT_EQ(edited("# note", "a", "1"), "# note\n\n[General]\na=1\n");
    EXPECT_EQ(edited("[Other]\na=2\n", "a", "1"), "[Other]\na=2\n\n[General]\na=1\n");
}

TEST(IniDocumentTest, leavesOutLinesWithZeroBytes) {
    const IniDocument document(QByteArray("[General]\na=1\nb=\0\0\nc=3\n", 24), "General");
    EXPECT_TRUE(document.isDamaged());
    EXPECT_EQ(document.bytes(), "[General]\na=1\nc=3\n");
    EXPECT_FALSE(IniDocument("a\n", "General").isDamaged());
}

} // namespace
} // namespace orvantile::platform::desktop
