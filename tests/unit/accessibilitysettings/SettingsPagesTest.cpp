#include "platform/linux/desktop/accessibilitysettings/SettingsPages.h"
#include "support/QtPrinting.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

template <typename Kind>
auto countOf(const std::vector<SettingsPage>& pages) {
    return std::ranges::count_if(pages, [](const auto& page) { return std::holds_alternative<Kind>(page); });
}

TEST(SettingsPagesTest, namedDesktopsComeFirst) {
    const auto gnome = accessibilityPages(u"ubuntu:GNOME");
    EXPECT_EQ(gnome.front(), SettingsPage(BusPage{u"org.gnome.Settings"_s, u"universal-access"_s}));
    const auto both = accessibilityPages(u"XFCE:GNOME");
    EXPECT_EQ(both[0], SettingsPage(EntryPage{u"xfce4-accessibility-settings.desktop"_s, {}}));
    EXPECT_EQ(both[1], SettingsPage(BusPage{u"org.gnome.Settings"_s, u"universal-access"_s}));
}

TEST(SettingsPagesTest, othersAreAskedByTheirEntriesAlone) {
    const auto pages = accessibilityPages(u"");
    EXPECT_EQ(countOf<BusPage>(pages), 0);
    EXPECT_EQ(countOf<ProgramPage>(pages), 0);
    EXPECT_GT(countOf<EntryPage>(pages), 6);
}

TEST(SettingsPagesTest, noPageIsTriedTwice) {
    const auto pages = accessibilityPages(u"GNOME:GNOME:KDE:gnome");
    for (const auto& page : pages) {
        EXPECT_EQ(std::ranges::count(pages, page), 1);
    }
    EXPECT_EQ(countOf<BusPage>(pages), 1);
}

} // namespace
} // namespace orvantile::platform::desktop
