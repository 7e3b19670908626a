#pragma once

#include "desktop/compatibility/Chord.h"
#include "desktop/compatibility/Program.h"
#include "desktop/compatibility/Truth.h"

#include <optional>

namespace orvantile::test {

/// Why a shortcut is not fired; absent for one that is safe.
[[nodiscard]] std::optional<QString> reasonToSkip(const Program& program, const Chord& chord,
                                                  const QString& title);

} // namespace orvantile::test
