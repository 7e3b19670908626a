#include "platform/linux/desktop/statusitem/MenuDescription.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

Menu makeMenu() {
    return Menu({MenuItem{.title = u"Enabled"_s, .action = MenuAction::call, .tag = 1, .on = true},
                 MenuItem::separator(), MenuItem{.title = u"Preferences…"_s, .action = MenuAction::call},
                 MenuItem{.title = u"Quit"_s, .action = MenuAction::terminate, .keyEquivalent = u"q"_s}});
}

TEST(MenuDescription, namesEveryItemInOrder) {
    EXPECT_THAT(
        describe(makeMenu()),
        ElementsAre(MenuEntry{1, {{"label", "Enabled"}, {"toggle-type", "checkmark"}, {"toggle-state", 1}}},
                    MenuEntry{2, {{"type", "separator"}}}, MenuEntry{3, {{"label", "Preferences…"}}},
                    MenuEntry{4, {{"label", "Quit"}, {"shortcut", MenuShortcut{{"Control", "q"}}}}}));
}

TEST(MenuDescription, underscoresAreNoMnemonics) {
    const Menu menu({MenuItem{.title = u"a_b__c"_s, .action = MenuAction::call}});
    EXPECT_EQ(describe(menu).front().properties.at("label"), MenuProperty("a__b____c"));
}

TEST(MenuDescription, onlyWhatDiffersHasChanged) {
    auto menu = makeMenu();
    const auto before = describe(menu);
    EXPECT_THAT(changes(before, describe(menu)), IsEmpty());
    menu.setState(1, false);
    EXPECT_THAT(changes(before, describe(menu)), ElementsAre(MenuEntry{1, {{"toggle-state", 0}}}));
}

} // namespace
} // namespace orvantile::platform::desktop
