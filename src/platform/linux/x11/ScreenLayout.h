#pragma once

#include "platform/Screens.h"
#include "platform/linux/x11/PixelRect.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace orvantile::platform::x11 {

/// A monitor as the server places it.
struct Monitor {
    PixelRect frame;
    PixelRect visible; ///< without panels and docks
    double scale = 1;  ///< device pixels per point
};

/// The part of the root window that a panel reserves along its edges, in the order of _NET_WM_STRUT_PARTIAL.
struct Strut {
    std::uint32_t left, right, top, bottom;
    std::uint32_t leftStart, leftEnd, rightStart, rightEnd, topStart, topEnd, bottomStart, bottomEnd;
};

/// Takes away from the visible part of `monitor` what `strut` reserves on a root window of that size.
void reserve(Monitor& monitor, const Strut& strut, int rootWidth, int rootHeight);

/// Places monitors in points and maps points back to pixels. The position of a monitor is that of its pixels,
/// so that monitors of different scales never overlap; within a monitor lengths are divided by its scale. The
/// first monitor has the origin.
class ScreenLayout {
public:
    /// `monitors` begins with the primary one.
    explicit ScreenLayout(std::vector<Monitor> monitors);

    [[nodiscard]] std::vector<Screen> screens() const;
    [[nodiscard]] Screen screen(std::size_t index) const;

    /// The monitor that holds most of `rect`, else the nearest; absent without monitors.
    [[nodiscard]] std::optional<std::size_t> monitorOf(const PixelRect& rect) const;

    struct Placement {
        PixelRect pixels;
        double scale = 1;
    };

    /// Where `rect` (points) is on the pixel grid: as it lies on the monitor `preferred` if it touches that,
    /// else on the one it touches first.
    [[nodiscard]] Placement place(const Rect& rect, std::optional<std::size_t> preferred) const;

private:
    [[nodiscard]] Rect toPoints(const PixelRect& rect, const Monitor& monitor) const;

    std::vector<Monitor> monitors;
};

} // namespace orvantile::platform::x11
