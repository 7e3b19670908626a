#pragma once

#include <QFont>

namespace orvantile {

/// The rounded semibold face of the HUD, which comes with the program and is loaded at the first use; what it
/// lacks comes from the system's fonts. Unhinted, so that lengths grow evenly with the size. `pixelSize` is
/// at least 1.
[[nodiscard]] QFont labelFont(int pixelSize);

/// Does at a convenient time what the first label would otherwise wait for: loads the face and shapes the
/// characters that labels begin with. Main thread only.
void prewarmLabelFont();

} // namespace orvantile
