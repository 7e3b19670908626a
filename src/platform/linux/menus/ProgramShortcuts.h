#pragma once

#include "platform/linux/menus/ShortcutsDescription.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvantile::platform::menus {

/// The files in a process's memory that may carry resources, from the text of its map: its program first,
/// then libraries and bundles; each once.
[[nodiscard]] std::vector<std::string> mappedFiles(std::string_view map, const std::string& program);

/// The shortcuts that a running program lists in its shortcuts window, in the user's language. Reads the
/// files that the process has mapped, so not for the main thread. Empty when it may not be looked at.
[[nodiscard]] std::vector<DescribedShortcut> shortcutsOfProcess(std::int32_t processIdentifier);

} // namespace orvantile::platform::menus
