#include "hud/EaseOut.h"

#include <algorithm>

namespace orvantile {

double easeOut(double progress) {
    // Of the two inner control points (0, 0) and (0.58, 1) only the second one counts.
    constexpr double secondX = 0.58;
    const double wanted = std::clamp(progress, 0.0, 1.0);
    double low = 0;
    double high = 1;
    constexpr int halvings = 40;
    for (int i = 0; i < halvings; ++i) {
        const double t = (low + high) / 2;
        const double x = 3 * (1 - t) * t * t * secondX + t * t * t;
        (x < wanted ? low : high) = t;
    }
    return 3 * (1 - high) * high * high + high * high * high;
}

} // namespace orvantile
