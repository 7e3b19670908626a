#include "platform/linux/x11/MenuTypes.h"

#include <gmock/gmock.h>
#include <vector>

namespace orvantile::platform::x11 {
namespace {

const Atoms atoms{.typeDialog = 1,
                  .typeMenu = 2,
                  .typePopupMenu = 3,
                  .typeDropdownMenu = 4,
                  .typeCombo = 5,
                  .typeNormal = 6,
                  .typeNotification = 7};
constexpr xcb_atom_t unknown = 99;

using Types = std::vector<xcb_atom_t>;

TEST(MenuTypes, areThoseOfMenusAndCombinationBoxes) {
    EXPECT_TRUE(isMenu(Types{atoms.typeMenu}, atoms));
    EXPECT_TRUE(isMenu(Types{atoms.typePopupMenu}, atoms));
    EXPECT_TRUE(isMenu(Types{atoms.typeDropdownMenu}, atoms));
    EXPECT_TRUE(isMenu(Types{atoms.typeCombo}, atoms));
}

TEST(MenuTypes, countAnywhereInTheList) {
    EXPECT_TRUE(isMenu(Types{unknown, atoms.typePopupMenu, atoms.typeNormal}, atoms));
}

TEST(MenuTypes, includeNormalWhenItStandsAlone) {
    EXPECT_TRUE(isMenu(Types{atoms.typeNormal}, atoms));
    EXPECT_FALSE(isMenu(Types{unknown, atoms.typeNormal}, atoms));
}

TEST(MenuTypes, leaveOutEverythingElse) {
    EXPECT_FALSE(isMenu(Types{}, atoms));
    EXPECT_FALSE(isMenu(Types{unknown}, atoms)); // a tool tip
    EXPECT_FALSE(isMenu(Types{atoms.typeNotification}, atoms));
    EXPECT_FALSE(isMenu(Types{atoms.typeDialog}, atoms));
}

} // namespace
} // namespace orvantile::platform::x11
