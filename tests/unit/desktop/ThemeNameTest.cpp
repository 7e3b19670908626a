#include "platform/linux/desktop/ThemeName.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

TEST(ThemeNameTest, tellsDarkThemesByTheirNames) {
    for (const auto* name : {"Adwaita-dark", "Arc-Dark", "Yaru-blue-dark-hdpi", "BreezeDark", "Breeze Dark",
                             "dark", "Materia_dark", "Adwaita:dark", "MATE-DARK"}) {
        EXPECT_TRUE(isDarkThemeName(QString::fromLatin1(name))) << name;
    }
    for (const auto* name :
         {"", "Adwaita", "Arc-Darker", "Arc-Darker-solid", "Darkness", "Embarkdark", "Shadow"}) {
        EXPECT_FALSE(isDarkThemeName(QString::fromLatin1(name))) << name;
    }
}

} // namespace
} // namespace orvantile::platform::desktop
