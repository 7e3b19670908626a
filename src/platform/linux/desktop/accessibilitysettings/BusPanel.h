#pragma once

#include "platform/linux/desktop/accessibilitysettings/Launch.h"
#include "platform/linux/desktop/accessibilitysettings/SettingsPage.h"

namespace orvantile::platform::desktop {

/// Asks the settings on the session bus for a panel; the bus starts them if need be. Waits for the answer.
/// False when they are not there or refuse; settings that do not answer in time are taken to be starting.
[[nodiscard]] bool activatePanel(const BusPage& page, const Launch& launch);

} // namespace orvantile::platform::desktop
