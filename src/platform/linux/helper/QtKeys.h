#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <cstdint>
#include <optional>

namespace orvantile::platform::helper {

/// The key combination that a key code of Qt with its modifier bits means; the codes are the same in Qt 5 and
/// Qt 6. Absent for a code that names no key.
[[nodiscard]] std::optional<keys::Accelerator> acceleratorOf(std::uint32_t combined);

} // namespace orvantile::platform::helper
