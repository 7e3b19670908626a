#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"
#include "platform/linux/helper/switch/HelperVariables.h"

namespace orvantile::platform::helper {

/// Gives the variables to the programs that the session's bus and its service manager start from now on.
/// Returns at once; silent where either is missing.
void sendToSession(desktop::SessionBus& bus, const HelperVariables& variables);

} // namespace orvantile::platform::helper
