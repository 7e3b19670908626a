#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <vector>

namespace orvantile::platform::keys {

/// Keys that change what others mean, and locks.
[[nodiscard]] bool isModifierKey(KeySymbol symbol);

/// Keys that are shortcuts even by themselves. Everything else types text or composes it.
[[nodiscard]] bool isFunctionOrNavigationKey(KeySymbol symbol);

/// The symbols of which that is true, except for the hundreds of keys of media keyboards.
[[nodiscard]] std::vector<KeySymbol> functionAndNavigationKeys();

} // namespace orvantile::platform::keys
