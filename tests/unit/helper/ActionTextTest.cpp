#include "platform/linux/helper/ActionText.h"

#include <gmock/gmock.h>

namespace orvantile::platform::helper {
namespace {

using Qt::StringLiterals::operator""_s;

TEST(ActionTextTest, leavesOutMarksOfMnemonics) {
    EXPECT_EQ(titleOf(u"&Save"), u"Save"_s);
    EXPECT_EQ(titleOf(u"Save &As…"), u"Save As…"_s);
    EXPECT_EQ(titleOf(u"Find && &Replace"), u"Find & Replace"_s);
    EXPECT_EQ(titleOf(u"保存(&S)"), u"保存"_s);
    EXPECT_EQ(titleOf(u"保存(&S)..."), u"保存..."_s);
    EXPECT_EQ(titleOf(u"R(&&D)"), u"R(&D)"_s);
    EXPECT_EQ(titleOf(u"Plain"), u"Plain"_s);
}

TEST(ActionTextTest, isOneTrimmedLineBeforeTheTab) {
    EXPECT_EQ(titleOf(u"  Save\tCtrl+S"), u"Save"_s);
    EXPECT_EQ(titleOf(u"two\nlines"), u"two lines"_s);
    EXPECT_EQ(titleOf(u"\tCtrl+S"), u""_s);
}

TEST(ActionTextTest, endsWell) {
    EXPECT_EQ(titleOf(u""), u""_s);
    EXPECT_EQ(titleOf(u"&"), u""_s);
    EXPECT_EQ(titleOf(u"Save&"), u"Save"_s);
    EXPECT_EQ(titleOf(u"Save(&"), u"Save("_s);
    EXPECT_EQ(titleOf(u"Save(&S"), u"Save(S"_s);
}

} // namespace
} // namespace orvantile::platform::helper
