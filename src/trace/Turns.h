#pragma once

namespace orvantile::trace {

/// Records each turn of the main loop. The product records nothing: this is empty. Builds that measure take
/// the class of the same name in `recording/` instead.
class [[maybe_unused]] Turns {};

} // namespace orvantile::trace
