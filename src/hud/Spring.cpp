#include "hud/Spring.h"

#include <cmath>
#include <numbers>

namespace orvantile {

double Spring::positionAt(double elapsed) const {
    if (elapsed <= 0) {
        return 0;
    }
    const double frequency = 2 * std::numbers::pi / response;
    const double damped = frequency * std::sqrt(1 - dampingFraction * dampingFraction);
    const double decay = dampingFraction * frequency;
    return 1 - std::exp(-decay * elapsed) *
                   (std::cos(damped * elapsed) + decay / damped * std::sin(damped * elapsed));
}

double Spring::settlingTime(double tolerance) const {
    // The envelope of the oscillation is e^(-decay t) / sqrt(1 - damping²).
    const double decay = dampingFraction * 2 * std::numbers::pi / response;
    const double amplitude = 1 / std::sqrt(1 - dampingFraction * dampingFraction);
    return std::log(amplitude / tolerance) / decay;
}

} // namespace orvantile
