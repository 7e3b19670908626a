#include "platform/linux/x11/ScreenLayout.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantile::platform::x11 {
namespace {

bool touch(const Rect& a, const Rect& b) {
    return a.minX() < b.maxX() && b.minX() < a.maxX() && a.minY() < b.maxY() && b.minY() < a.maxY();
}

/// Whether what is reserved from `start` to `end` lies beside the monitor's side from `low` to `high`.
bool overlaps(std::uint32_t start, std::uint32_t end, int low, int high) {
    return std::int64_t{start} < high && std::int64_t{end} >= low;
}

std::int64_t areaOf(const PixelRect& rect) {
    return std::int64_t{rect.width} * rect.height;
}

std::int64_t squaredDistance(const PixelRect& a, const PixelRect& b) {
    const std::int64_t dx = (a.x + a.right()) - (b.x + b.right());
    const std::int64_t dy = (a.y + a.bottom()) - (b.y + b.bottom());
    return dx * dx + dy * dy;
}

} // namespace

void reserve(Monitor& monitor, const Strut& strut, int rootWidth, int rootHeight) {
    const auto& frame = monitor.frame;
    int left = monitor.visible.x;
    int top = monitor.visible.y;
    int right = monitor.visible.right();
    int bottom = monitor.visible.bottom();
    const auto inside = [](std::int64_t edge, int low, int high) { return edge > low && edge < high; };
    if (overlaps(strut.leftStart, strut.leftEnd, frame.y, frame.bottom()) &&
        inside(strut.left, frame.x, frame.right())) {
        left = std::max(left, static_cast<int>(strut.left));
    }
    if (overlaps(strut.topStart, strut.topEnd, frame.x, frame.right()) &&
        inside(strut.top, frame.y, frame.bottom())) {
        top = std::max(top, static_cast<int>(strut.top));
    }
    if (const auto edge = std::int64_t{rootWidth} - strut.right;
        overlaps(strut.rightStart, strut.rightEnd, frame.y, frame.bottom()) &&
        inside(edge, frame.x, frame.right())) {
        right = std::min(right, static_cast<int>(edge));
    }
    if (const auto edge = std::int64_t{rootHeight} - strut.bottom;
        overlaps(strut.bottomStart, strut.bottomEnd, frame.x, frame.right()) &&
        inside(edge, frame.y, frame.bottom())) {
        bottom = std::min(bottom, static_cast<int>(edge));
    }
    if (const PixelRect rest{left, top, right - left, bottom - top}; !rest.isEmpty()) {
        monitor.visible = rest;
    }
}

ScreenLayout::ScreenLayout(std::vector<Monitor> monitors_) : monitors(std::move(monitors_)) {}

Rect ScreenLayout::toPoints(const PixelRect& rect, const Monitor& monitor) const {
    const auto& first = monitors.front();
    const double left = monitor.frame.x - first.frame.x;
    const double top = first.frame.height / first.scale - (monitor.frame.y - first.frame.y);
    const double height = rect.height / monitor.scale;
    return {left + (rect.x - monitor.frame.x) / monitor.scale,
            top - (rect.y - monitor.frame.y) / monitor.scale - height, rect.width / monitor.scale, height};
}

Screen ScreenLayout::screen(std::size_t index) const {
    const auto& monitor = monitors.at(index);
    return {toPoints(monitor.frame, monitor), toPoints(monitor.visible, monitor), monitor.scale};
}

std::vector<Screen> ScreenLayout::screens() const {
    std::vector<Screen> all;
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        all.push_back(screen(i));
    }
    return all;
}

std::optional<std::size_t> ScreenLayout::monitorOf(const PixelRect& rect) const {
    if (monitors.empty()) {
        return std::nullopt;
    }
    const auto closeness = [&](const Monitor& monitor) {
        return std::pair(areaOf(monitor.frame.intersected(rect)), -squaredDistance(monitor.frame, rect));
    };
    const auto best = std::ranges::max_element(monitors, {}, closeness);
    return static_cast<std::size_t>(best - monitors.begin());
}

ScreenLayout::Placement ScreenLayout::place(const Rect& rect, std::optional<std::size_t> preferred) const {
    if (monitors.empty()) {
        return {};
    }
    std::size_t chosen = preferred.value_or(0);
    if (!touch(rect, screen(chosen).frame)) {
        const auto all = screens();
        const auto found =
            std::ranges::find_if(all, [&](const Screen& other) { return touch(rect, other.frame); });
        if (found != all.end()) {
            chosen = static_cast<std::size_t>(found - all.begin());
        }
    }
    const auto& monitor = monitors[chosen];
    const auto frame = screen(chosen).frame;
    const auto pixels = [&](double points) { return static_cast<int>(std::lround(points * monitor.scale)); };
    const auto length = [&](double points) { return static_cast<int>(std::ceil(points * monitor.scale)); };
    return {{monitor.frame.x + pixels(rect.minX() - frame.minX()),
             monitor.frame.y + pixels(frame.maxY() - rect.maxY()), length(rect.width), length(rect.height)},
            monitor.scale};
}

} // namespace orvantile::platform::x11
