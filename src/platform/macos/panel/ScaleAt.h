#pragma once

#include "platform/Screens.h"

namespace orvantile::platform::macos {

/// Device pixels per point of the screen that shows most of `rect`; of the main screen when none does.
[[nodiscard]] double scaleAt(const Rect& rect, const Screens& screens);

} // namespace orvantile::platform::macos
