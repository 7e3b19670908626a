#include "app/ActionLabel.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

class AppActionLabelTest : public ::testing::Test {
protected:
    test::FakePlatform fakes;
    Settings settings{*fakes.platform().defaults};
};

TEST_F(AppActionLabelTest, shortcutTwoBlanksTitle) {
    EXPECT_EQ(actionLabel(settings, u"⌘S"_s, u"Save"_s), u"⌘S\u0020\u0020Save"_s);
}

TEST_F(AppActionLabelTest, titleAloneWithoutShortcutOrWhenItIsNotWanted) {
    EXPECT_EQ(actionLabel(settings, std::nullopt, u"Save"_s), u"Save"_s);
    settings.showShortcut = false;
    EXPECT_EQ(actionLabel(settings, u"⌘S"_s, u"Save"_s), u"Save"_s);
}

TEST_F(AppActionLabelTest, nothingIsTrimmed) {
    EXPECT_EQ(actionLabel(settings, u"⌘S"_s, QString()), u"⌘S  "_s);
    EXPECT_EQ(actionLabel(settings, u"⌘S"_s, u"  Save "_s), u"⌘S    Save "_s);
}

TEST_F(AppActionLabelTest, nothingWhileSwitchedOff) {
    settings.enabled = false;
    EXPECT_EQ(actionLabel(settings, u"⌘S"_s, u"Save"_s), std::nullopt);
}

} // namespace
} // namespace orvantile
