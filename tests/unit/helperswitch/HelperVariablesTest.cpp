#include "platform/linux/helper/switch/HelperVariables.h"

#include <gmock/gmock.h>

namespace orvantile::platform::helper {
namespace {

const QList<QByteArray> folders{"/usr/lib/orvantile/qt5", "/usr/lib/orvantile/qt6"};

TEST(HelperVariablesTest, addBehindWhatIsThere) {
    EXPECT_EQ(HelperVariables().with(folders),
              (HelperVariables{"/usr/lib/orvantile/qt5:/usr/lib/orvantile/qt6", "orvantile"}));
    EXPECT_EQ((HelperVariables{"/opt/plugins", "evdevmouse"}.with(folders)),
              (HelperVariables{"/opt/plugins:/usr/lib/orvantile/qt5:/usr/lib/orvantile/qt6",
                               "evdevmouse,orvantile"}));
}

TEST(HelperVariablesTest, addOnce) {
    const auto once = HelperVariables().with(folders);
    EXPECT_EQ(once.with(folders), once);
    EXPECT_TRUE(once.haveHelper());
    EXPECT_FALSE((HelperVariables{"/usr/lib/orvantile/qt5", "orvantile2"}.haveHelper()));
}

TEST(HelperVariablesTest, takeOutOnlyTheirOwn) {
    const HelperVariables before{"/opt/plugins:/opt/more", "evdevmouse"};
    EXPECT_EQ(before.with(folders).without(folders), before);
    EXPECT_EQ(HelperVariables().with(folders).without(folders), HelperVariables());
    EXPECT_EQ(before.without(folders), before);
}

} // namespace
} // namespace orvantile::platform::helper
