#pragma once

#include <string>

namespace orvantile::platform::a11y {

/// The address of the user's session bus; empty when the environment names none.
[[nodiscard]] std::string sessionAddress();

} // namespace orvantile::platform::a11y
