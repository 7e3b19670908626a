#include "platform/linux/desktop/accessibilitysettings/SettingsPages.h"

#include <set>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

struct Desktop {
    QStringList names; ///< as XDG_CURRENT_DESKTOP has them
    std::vector<SettingsPage> pages;
};

/// Those whose settings also run elsewhere come first.
std::vector<Desktop> knownDesktops() {
    return {
        {{u"XFCE"_s}, {EntryPage{u"xfce4-accessibility-settings.desktop"_s, {}}}},
        {{u"MATE"_s},
         {EntryPage{u"mate-at-properties.desktop"_s, {}}, ProgramPage{u"mate-at-properties"_s, {}},
          EntryPage{u"matecc.desktop"_s, {}}}},
        {{u"KDE"_s},
         {EntryPage{u"kcm_access.desktop"_s, {}}, EntryPage{u"systemsettings.desktop"_s, {u"kcm_access"_s}},
          EntryPage{u"kdesystemsettings.desktop"_s, {u"kcm_access"_s}},
          ProgramPage{u"kcmshell6"_s, {u"kcm_access"_s}}, ProgramPage{u"kcmshell5"_s, {u"kcm_access"_s}}}},
        {{u"X-Cinnamon"_s, u"Cinnamon"_s},
         {EntryPage{u"cinnamon-settings-universal-access.desktop"_s, {}},
          EntryPage{u"cinnamon-settings.desktop"_s, {u"universal-access"_s}}}},
        {{u"LXQt"_s}, {EntryPage{u"lxqt-config.desktop"_s, {}}}},
        {{u"GNOME"_s},
         {BusPage{u"org.gnome.Settings"_s, u"universal-access"_s},
          EntryPage{u"gnome-universal-access-panel.desktop"_s, {}},
          EntryPage{u"org.gnome.Settings.desktop"_s, {u"universal-access"_s}},
          EntryPage{u"gnome-control-center.desktop"_s, {u"universal-access"_s}}}},
    };
}

} // namespace

std::vector<SettingsPage> accessibilityPages(QStringView currentDesktop) {
    const auto desktops = knownDesktops();
    std::vector<SettingsPage> pages;
    std::set<const Desktop*> taken;
    for (const auto name : currentDesktop.split(u':')) {
        for (const auto& desktop : desktops) {
            if (desktop.names.contains(name.trimmed(), Qt::CaseInsensitive) &&
                taken.insert(&desktop).second) {
                pages.insert(pages.end(), desktop.pages.begin(), desktop.pages.end());
            }
        }
    }
    for (const auto& desktop : desktops) {
        if (taken.contains(&desktop)) {
            continue;
        }
        for (const auto& page : desktop.pages) {
            if (std::holds_alternative<EntryPage>(page)) {
                pages.push_back(page);
            }
        }
    }
    return pages;
}

} // namespace orvantile::platform::desktop
