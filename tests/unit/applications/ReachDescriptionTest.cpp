#include "platform/linux/applications/ReachDescription.h"

#include "support/QtPrinting.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace orvantile::platform::applications {
namespace {

using Qt::StringLiterals::operator""_s;
using a11y::MenuReach;

constexpr MenuReach nothing{.asked = true};
constexpr MenuReach items{.items = 9, .asked = true};
constexpr MenuReach commands{.items = 9, .accelerators = 4, .asked = true};

const ProgramFacts plain{.name = u"editor"_s};
const ProgramFacts qt{.name = u"editor"_s, .usesQt = true};
const ProgramFacts helped{.name = u"editor"_s, .usesQt = true, .hasHelper = true};

TEST(ReachDescriptionTest, countsWhatAProgramTells) {
    EXPECT_EQ(describeReach(plain, commands, Helper::on),
              u"“editor”, used last, tells 4 commands that have shortcuts."_s);
    EXPECT_EQ(describeReach(plain, {.items = 3, .accelerators = 1}, Helper::on),
              u"“editor”, used last, tells one command that has a shortcut."_s);
    EXPECT_EQ(describeReach(qt, commands, Helper::on),
              u"“editor”, used last, tells 4 commands that have shortcuts."_s)
        << "over the menu bar of the desktop";
}

TEST(ReachDescriptionTest, saysWhatHelpsAQtProgram) {
    EXPECT_EQ(describeReach(helped, items, Helper::on),
              u"“editor”, used last, tells each command when it is fired."_s);
    EXPECT_EQ(describeReach(qt, items, Helper::on),
              u"“editor”, used last, was started without the helper. Start it again."_s);
    EXPECT_EQ(describeReach(qt, items, Helper::off),
              u"“editor”, used last, tells its commands only with the helper, which is off."_s);
}

TEST(ReachDescriptionTest, saysThatAProgramTellsLittleOrNothing) {
    EXPECT_EQ(describeReach(plain, items, Helper::on),
              u"“editor”, used last, tells the commands of a menu once that has been opened."_s);
    EXPECT_EQ(describeReach(plain, nothing, Helper::missing),
              u"“editor”, used last, does not tell its menus. If it has been running since before access was "
              u"granted, start it again."_s);
}

TEST(ReachDescriptionTest, blamesNoProgramThatHasNotBeenAsked) {
    EXPECT_EQ(describeReach(plain, {}, Helper::on),
              u"“editor”, used last, has not been in front since Orvantile could ask it for its menus."_s);
}

TEST(ProgramFactsTest, areConcludedFromWhatIsLoaded) {
    EXPECT_EQ(factsFrom(u"editor"_s, "7f00-7f10 r-xp 0 08:01 5 /usr/lib/libgtk-3.so.0\n"), plain);
    EXPECT_EQ(factsFrom(u"editor"_s, "7f00-7f10 r-xp 0 08:01 5 /usr/lib/libQt5Gui.so.5.15.8\n"), qt);
    EXPECT_EQ(factsFrom(u"editor"_s, "7f00-7f10 r-xp 0 08:01 5 /usr/lib/libQt6Gui.so.6\n"
                                     "7f20-7f30 r-xp 0 08:01 6 "
                                     "/usr/lib/orvantile/qt6/plugins/generic/orvantile.so\n"),
              helped);
}

TEST(ProgramFactsTest, areThoseOfThisVeryProcess) {
    const auto facts = factsOf(getpid());
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->name, u"unit_applicatio"_s) << "as the kernel cuts it";
    EXPECT_FALSE(facts->hasHelper);
}

TEST(ProgramFactsTest, areAbsentForAProcessThatIsNotThere) {
    EXPECT_EQ(factsOf(-1), std::nullopt);
    EXPECT_EQ(factsOf(1 << 30), std::nullopt);
}

} // namespace
} // namespace orvantile::platform::applications
