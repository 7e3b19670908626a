#pragma once

#include "support/desktop/XConnection.h"

#include <cstdint>

namespace orvantile::bench {

/// The key whose first symbol is that one. Throws std::runtime_error when there is none.
[[nodiscard]] std::uint8_t keyOf(const test::XConnection& x, xcb_keysym_t symbol);

} // namespace orvantile::bench
