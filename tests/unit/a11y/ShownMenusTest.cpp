#include "platform/linux/a11y/ShownMenus.h"

#include "platform/linux/a11y/ReplyDecoder.h"
#include "support/VirtualScheduler.h"
#include "support/desktop/MainLoop.h"
#include "unit/a11y/ScriptedAccessibility.h"

#include <gmock/gmock.h>

namespace orvantile::platform::a11y {
namespace {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto menuItem = static_cast<std::uint32_t>(AccessibleRole::menuItem);
constexpr std::uint32_t pushButton = 43;

const ObjectReference save{":1.7", "/save"};
const ObjectReference close{":1.7", "/close"};
const ObjectReference toolbarButton{":1.7", "/button"};
const ObjectReference popup{":1.7", "/popup"};
const ObjectReference elsewhere{":1.8", "/save"};

class ShownMenusTest : public ::testing::Test {
protected:
    ShownMenusTest() {
        for (const auto* path : {"/save", "/close"}) {
            application.roles[path] = menuItem;
            application.showing.insert(path);
        }
        application.roles["/button"] = pushButton;
        application.roles["/popup"] = pushButton;
        application.showing.insert("/popup");
    }

    [[nodiscard]] bool awaitOpen() {
        return awaitThat([this] { return menus.isOpen(); });
    }

    [[nodiscard]] bool awaitClosed() {
        return awaitThat([this] { return !menus.isOpen(); });
    }

    /// Waits until the application has been asked so often, and its answers have arrived.
    [[nodiscard]] bool awaitQuestions(qsizetype count) {
        if (!awaitThat([&] { return application.asked().size() >= count; })) {
            return false;
        }
        test::turnFor(20);
        return application.asked().size() == count;
    }

    void pass(std::chrono::seconds time) { scheduler.advance(static_cast<double>(time.count())); }

    test::ScriptedAccessibility application;
    test::VirtualScheduler scheduler;
    std::vector<bool> told;
    ShownMenus menus{application.connection(), scheduler, [this] { told.push_back(menus.isOpen()); }};
};

TEST_F(ShownMenusTest, aMenuIsOpenWhileOneOfItsItemsShows) {
    menus.showing(save, true);
    ASSERT_TRUE(awaitOpen());
    menus.showing(close, true);
    ASSERT_TRUE(awaitQuestions(2));
    menus.showing(save, false);
    EXPECT_TRUE(menus.isOpen());
    menus.showing(close, false);
    EXPECT_FALSE(menus.isOpen());
    EXPECT_THAT(told, ElementsAre(true, false));
}

TEST_F(ShownMenusTest, theRoleOfAnObjectIsAskedOnce) {
    for (int round = 0; round < 3; ++round) {
        menus.showing(save, true);
        ASSERT_TRUE(awaitOpen());
        menus.showing(save, false);
    }
    EXPECT_THAT(application.asked(), ElementsAre(u"GetRole /save"_s));
}

TEST_F(ShownMenusTest, whatIsNoMenuItemOpensNothing) {
    menus.showing(toolbarButton, true);
    ASSERT_TRUE(awaitQuestions(1));
    EXPECT_FALSE(menus.isOpen());
    menus.showing({":1.7", "/unknown"}, true);
    ASSERT_TRUE(awaitQuestions(2));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ShownMenusTest, anItemThatHidBeforeItWasKnownOpensNothing) {
    application.silent = true;
    menus.showing(save, true);
    ASSERT_TRUE(awaitQuestions(1));
    menus.showing(save, false);
    application.answerAll();
    test::turnFor(20);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ShownMenusTest, aMenuThatNobodySaysHasGoneIsAskedAfter) {
    menus.showing(save, true);
    ASSERT_TRUE(awaitOpen());
    pass(ShownMenus::interval);
    ASSERT_TRUE(awaitQuestions(2));
    EXPECT_TRUE(menus.isOpen()) << "it still shows";
    application.showing.clear();
    pass(ShownMenus::interval - std::chrono::seconds(1));
    test::turnFor(20);
    EXPECT_TRUE(menus.isOpen());
    pass(std::chrono::seconds(1));
    EXPECT_TRUE(awaitClosed());
    EXPECT_THAT(told, ElementsAre(true, false));
    EXPECT_EQ(scheduler.pending(), 0) << "nothing is watched any more";
}

TEST_F(ShownMenusTest, anItemThatIsNoLongerThereIsNotOpen) {
    menus.showing(save, true);
    ASSERT_TRUE(awaitOpen());
    application.roles.clear();
    pass(ShownMenus::interval);
    EXPECT_TRUE(awaitClosed());
}

TEST_F(ShownMenusTest, noMenuIsOpenForEver) {
    menus.showing(save, true);
    ASSERT_TRUE(awaitOpen());
    for (auto passed = ShownMenus::interval; passed < ShownMenus::longest; passed += ShownMenus::interval) {
        pass(ShownMenus::interval);
        test::turnFor(5);
        ASSERT_TRUE(menus.isOpen()) << "after " << passed.count() << " s";
    }
    pass(ShownMenus::interval);
    EXPECT_FALSE(menus.isOpen());
    EXPECT_THAT(told, ElementsAre(true, false));
    menus.showing(close, true);
    EXPECT_TRUE(awaitOpen()) << "the next one counts again";
}

TEST_F(ShownMenusTest, nothingIsOpenAfterAReset) {
    menus.showing(save, true);
    ASSERT_TRUE(awaitOpen());
    menus.reset();
    EXPECT_FALSE(menus.isOpen());
    EXPECT_THAT(told, ElementsAre(true, false));
    EXPECT_EQ(scheduler.pending(), 0);
    menus.reset();
    EXPECT_EQ(told.size(), 2U) << "nothing has changed";
}

TEST_F(ShownMenusTest, anAnswerThatComesAfterAResetOpensNothing) {
    application.silent = true;
    menus.showing(save, true);
    ASSERT_TRUE(awaitQuestions(1));
    menus.reset();
    application.answerAll();
    test::turnFor(20);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(ShownMenusTest, anotherApplicationEndsTheMenusOfTheFormer) {
    menus.showing(save, true);
    ASSERT_TRUE(awaitOpen());
    menus.showing(elsewhere, true);
    ASSERT_TRUE(awaitOpen());
    EXPECT_THAT(told, ElementsAre(true, false, true));
}

TEST_F(ShownMenusTest, aPopupIsOpenUntilItShowsNoMore) {
    menus.popupAppeared(popup);
    EXPECT_TRUE(menus.isOpen());
    menus.showing(close, false); // something in it
    ASSERT_TRUE(awaitQuestions(1));
    EXPECT_TRUE(menus.isOpen());
    application.showing.erase("/popup");
    menus.showing(close, false);
    EXPECT_TRUE(awaitClosed());
    EXPECT_THAT(application.asked(), ElementsAre(u"GetState /popup"_s, u"GetState /popup"_s));
}

TEST_F(ShownMenusTest, theEndOfTheBusLeavesNothingBehind) {
    menus.showing(save, true);
    ASSERT_TRUE(awaitOpen());
    application.connection().close();
    pass(ShownMenus::longest);
    EXPECT_FALSE(menus.isOpen());
}

} // namespace
} // namespace orvantile::platform::a11y
