#include "platform/macos/panel/ScaleAt.h"

#include <algorithm>

namespace orvantile::platform::macos {
namespace {

double sharedArea(const Rect& one, const Rect& other) {
    const double width = std::min(one.maxX(), other.maxX()) - std::max(one.minX(), other.minX());
    const double height = std::min(one.maxY(), other.maxY()) - std::max(one.minY(), other.minY());
    return std::max(width, 0.0) * std::max(height, 0.0);
}

} // namespace

double scaleAt(const Rect& rect, const Screens& screens) {
    double largest = 0;
    const auto main = screens.mainScreen();
    double scale = main ? main->scale : 1;
    for (const auto& screen : screens.screens()) {
        if (const double area = sharedArea(rect, screen.frame); area > largest) {
            largest = area;
            scale = screen.scale;
        }
    }
    return scale;
}

} // namespace orvantile::platform::macos
