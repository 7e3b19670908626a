#include "platform/linux/wayland/EdgePlacement.h"

#include <algorithm>
#include <cmath>

namespace orvantile::platform::wayland {
namespace {

struct AxisPlacement {
    Side side;
    int margin;
    int length;
    double origin;
};

/// `before` and `after` are the distances of the panel to the edges.
AxisPlacement placeAlong(double length, double before, double after) {
    constexpr double same = 0.5; // points: less cannot be told apart by whole margins
    const auto whole = [](double distance) { return std::max(static_cast<int>(std::floor(distance)), 0); };
    int start = whole(before);
    int end = whole(after);
    auto side = std::abs(before) <= std::abs(after) ? Side::near : Side::far;
    if (std::abs(before - after) < same) {
        side = Side::middle;
        start = end = std::min(start, end);
    }
    const int margin = side == Side::near ? start : side == Side::far ? end : 0;
    return {side, margin, static_cast<int>(std::lround(length)) - start - end, start - before};
}

} // namespace

EdgePlacement placeAtEdges(const Rect& panel, const Rect& output) {
    const auto x = placeAlong(output.width, panel.minX() - output.minX(), output.maxX() - panel.maxX());
    const auto y = placeAlong(output.height, output.maxY() - panel.maxY(), panel.minY() - output.minY());
    if (x.length <= 0 || y.length <= 0) {
        return {};
    }
    return {.horizontal = x.side,
            .vertical = y.side,
            .horizontalMargin = x.margin,
            .verticalMargin = y.margin,
            .size = {x.length, y.length},
            .origin = {x.origin, y.origin}};
}

} // namespace orvantile::platform::wayland
