#pragma once

#include <QString>

namespace orvantile {

// Values as they stand beside sliders. What is no number is a dash.

[[nodiscard]] QString secondsText(double seconds);  ///< rounded to one decimal: 1.2s
[[nodiscard]] QString pointsText(double points);    ///< truncated: 22.9 is 22pt
[[nodiscard]] QString percentText(double fraction); ///< truncated: 0.57, just below 57 hundredths, is 56%

} // namespace orvantile
