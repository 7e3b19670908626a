#pragma once

#include <algorithm>

namespace orvantile::platform::x11 {

/// A rectangle in device pixels of the root window; y grows downwards.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] int right() const { return x + width; }

    [[nodiscard]] int bottom() const { return y + height; }

    [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }

    [[nodiscard]] PixelRect intersected(const PixelRect& other) const {
        const int left = std::max(x, other.x);
        const int top = std::max(y, other.y);
        const PixelRect both{left, top, std::min(right(), other.right()) - left,
                             std::min(bottom(), other.bottom()) - top};
        return both.isEmpty() ? PixelRect{} : both;
    }

    [[nodiscard]] bool contains(const PixelRect& other) const {
        return other.x >= x && other.y >= y && other.right() <= right() && other.bottom() <= bottom();
    }

    friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

} // namespace orvantile::platform::x11
