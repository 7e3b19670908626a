#pragma once

#include "platform/Platform.h"

#include <memory>

namespace orvantile::platform {

/// A platform whose every member works and does nothing. Desktop layers start from it and replace what they
/// have.
[[nodiscard]] std::unique_ptr<Platform> makeNullPlatform();

} // namespace orvantile::platform
