#pragma once

#include <functional>

namespace orvantile::test {

/// Turns the main loop until `condition` holds. False when it still does not after 15 seconds.
[[nodiscard]] bool turnUntil(const std::function<bool()>& condition);

} // namespace orvantile::test
