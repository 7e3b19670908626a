#pragma once

#include "platform/linux/desktop/accessibilitysettings/SettingsPage.h"

#include <QStringView>
#include <vector>

namespace orvantile::platform::desktop {

/// Where accessibility is set, best first. `currentDesktop`: names separated by colons, the most specific
/// first, as XDG_CURRENT_DESKTOP has them; letter case does not matter. The pages of the named desktops come
/// first, then those of all others, which may be installed beside.
[[nodiscard]] std::vector<SettingsPage> accessibilityPages(QStringView currentDesktop);

} // namespace orvantile::platform::desktop
