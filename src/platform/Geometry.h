#pragma once

namespace orvantile::platform {

/// A size in points.
struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle in screen points. y grows upwards; the origin is the bottom-left corner of the first screen,
/// so screens to the left of it or below it have negative coordinates.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] double minX() const { return x; }

    [[nodiscard]] double midX() const { return x + width / 2; }

    [[nodiscard]] double maxX() const { return x + width; }

    [[nodiscard]] double minY() const { return y; }

    [[nodiscard]] double midY() const { return y + height / 2; }

    [[nodiscard]] double maxY() const { return y + height; }

    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace orvantile::platform
