#pragma once

#include "desktop/compatibility/Program.h"

namespace orvantile::test {

[[nodiscard]] std::vector<Program> gtkPrograms();
[[nodiscard]] std::vector<Program> qtPrograms();

/// Those with a toolkit of their own, or one on top of another.
[[nodiscard]] std::vector<Program> otherPrograms();

} // namespace orvantile::test
