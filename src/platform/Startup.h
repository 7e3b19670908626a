#pragma once

#include "platform/Launch.h"
#include "platform/Platform.h"

#include <QString>
#include <memory>
#include <optional>

namespace orvantile::platform {

/// Called before the toolkit's application object exists: prepares the process for this desktop. Returns the
/// reason, in a sentence for the user, when the program cannot run here.
[[nodiscard]] std::optional<QString> prepareProcess();

/// Called next, before the toolkit takes what the launching desktop has left in the environment. Never null.
[[nodiscard]] std::unique_ptr<Launch> beginLaunch();

/// Called once the application object exists: the peers for this desktop.
[[nodiscard]] std::unique_ptr<Platform> makePlatform();

} // namespace orvantile::platform
