#pragma once

#include "platform/linux/desktop/accessibilitysettings/Launch.h"
#include "platform/linux/desktop/accessibilitysettings/SettingsPage.h"

#include <vector>

namespace orvantile::platform::desktop {

/// Opens the first of the pages that is there; false when none is. Reads files, waits for programs and the
/// bus. Any thread.
[[nodiscard]] bool openFirst(const std::vector<SettingsPage>& pages, const Launch& launch);

} // namespace orvantile::platform::desktop
