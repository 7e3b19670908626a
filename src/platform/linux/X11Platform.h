#pragma once

#include "platform/Platform.h"

#include <memory>

namespace orvantile::platform {

/// The peers for a desktop on an X server. What cannot be had is a peer that does nothing.
[[nodiscard]] std::unique_ptr<Platform> makeX11Platform();

} // namespace orvantile::platform
