#pragma once

#include "platform/Geometry.h"

#include <QPointF>
#include <QSize>

namespace orvantile::platform::wayland {

/// To which side of the usable area a surface keeps its distance.
enum class Side { near, middle, far };

/// Where a surface lies on its output, told by distances to edges: all that a client can tell a compositor,
/// and all that the compositor needs to keep the surface off panels and docks.
struct EdgePlacement {
    Side horizontal = Side::middle; ///< near is left
    Side vertical = Side::middle;   ///< near is the top
    int horizontalMargin = 0;       ///< points from that side
    int verticalMargin = 0;
    QSize size;     ///< of the surface, whole points; empty when nothing of the panel is on the output
    QPointF origin; ///< where in the panel the surface begins, points; negative where it begins before it

    friend bool operator==(const EdgePlacement&, const EdgePlacement&) = default;
};

/// Places `panel` on the output whose frame is `output`. The surface is the part of the panel that is on the
/// output, grown to whole points. A panel that is equally far from two opposite edges is centred between
/// them, any other keeps its distance to the nearer one.
[[nodiscard]] EdgePlacement placeAtEdges(const Rect& panel, const Rect& output);

} // namespace orvantile::platform::wayland
