#pragma once

namespace orvantile {

/// A damped spring that moves from 0 to 1, given as designers do: by its response (the period of the undamped
/// oscillation, in seconds) and its damping fraction (0 to below 1).
class Spring {
public:
    constexpr Spring(double response_, double dampingFraction_)
        : response(response_),
          dampingFraction(dampingFraction_) {}

    /// Where it is `elapsed` seconds after it was let go; overshoots 1.
    [[nodiscard]] double positionAt(double elapsed) const;

    /// When it stays within `tolerance` of 1 for good.
    [[nodiscard]] double settlingTime(double tolerance) const;

private:
    double response;
    double dampingFraction;
};

} // namespace orvantile
