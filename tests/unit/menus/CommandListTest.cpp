#include "platform/linux/menus/CommandList.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr keys::Accelerator controlS{{.control = true}, 0x73};
constexpr keys::Accelerator controlT{{.control = true}, 0x74};

AttributeValue title(const a11y::MenuAnswer& answer) {
    return answer.command ? answer.command->copyAttribute(u"AXTitle") : AttributeValue();
}

TEST(CommandListTest, answersWithTheFirstEnabledCommand) {
    const Commands commands{
        {u"Off"_s, controlS, false}, {u"Save"_s, controlS, true}, {u"Other"_s, controlS, true}};
    const auto told = answer(commands, {controlT, controlS});
    EXPECT_EQ(title(told), AttributeValue(u"Save"_s));
    EXPECT_TRUE(told.decided);
}

TEST(CommandListTest, decidesThatADisabledCommandDoesNothing) {
    const auto told = answer({{u"Save"_s, controlS, false}}, {controlS});
    EXPECT_EQ(told.command, nullptr);
    EXPECT_TRUE(told.decided);
}

TEST(CommandListTest, leavesKeysToOthersThatItDoesNotKnow) {
    const auto told = answer({{u"Save"_s, controlS, true}}, {controlT});
    EXPECT_EQ(told.command, nullptr);
    EXPECT_FALSE(told.decided);
}

TEST(CommandListTest, namesNothingThatHasNoTitle) {
    EXPECT_EQ(answer({{QString(), controlS, true}}, {controlS}).command, nullptr);
}

TEST(CommandListTest, dropsTheMarksOfMnemonics) {
    EXPECT_EQ(withoutMnemonic(u"_Save"), u"Save"_s);
    EXPECT_EQ(withoutMnemonic(u"Save _As…"), u"Save As…"_s);
    EXPECT_EQ(withoutMnemonic(u"snake__case"), u"snake_case"_s);
    EXPECT_EQ(withoutMnemonic(u"____"), u"__"_s);
    EXPECT_EQ(withoutMnemonic(u"end_"), u"end"_s);
    EXPECT_EQ(withoutMnemonic(u"_ "), QString());
    EXPECT_EQ(withoutMnemonic(u" padded "), u"padded"_s);
    EXPECT_EQ(withoutMnemonic(u""), QString());
}

} // namespace
} // namespace orvantile::platform::menus
