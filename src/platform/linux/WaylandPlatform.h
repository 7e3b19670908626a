#pragma once

#include "platform/Platform.h"

#include <memory>

namespace orvantile::platform {

/// The peers for a Wayland compositor with layer surfaces. What cannot be had is a peer that does nothing.
/// Programs under the compositor's own X server are observed there, where there is one.
[[nodiscard]] std::unique_ptr<Platform> makeWaylandPlatform();

/// The peers for a Wayland compositor without them: those of its X server, with an eye on its own programs.
[[nodiscard]] std::unique_ptr<Platform> makeXwaylandPlatform();

} // namespace orvantile::platform
