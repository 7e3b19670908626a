#pragma once

namespace orvantile {

/// The ease-out curve on which style sheets and toolkits agree, the cubic Bézier (0, 0, 0.58, 1): how far a
/// movement is at `progress` of its time, both 0 to 1 and clamped.
[[nodiscard]] double easeOut(double progress);

} // namespace orvantile
