#pragma once

#include "platform/Screens.h"

#include <QRect>
#include <QSize>
#include <cstddef>
#include <optional>
#include <vector>

namespace orvantile::platform::wayland {

/// An output as the compositor describes it.
struct OutputGeometry {
    QRect logical;       ///< in the compositor's space, points; y grows downwards
    QSize pixels;        ///< of the mode, as the output is turned
    int bufferScale = 1; ///< the whole scale that buffers have at least

    /// Device pixels per point, in steps of 1/120 as compositors have it.
    [[nodiscard]] double scale() const;

    friend bool operator==(const OutputGeometry&, const OutputGeometry&) = default;
};

/// Turns the compositor's space into screen points. The first output has the origin.
///
/// No client of a compositor may know where panels and docks lie, so the visible frame is the whole frame: a
/// surface that keeps its distance to the edges is kept inside the usable area by the compositor itself.
class OutputLayout {
public:
    explicit OutputLayout(std::vector<OutputGeometry> outputs);

    [[nodiscard]] std::vector<Screen> screens() const;
    [[nodiscard]] Screen screen(std::size_t index) const;

private:
    std::vector<OutputGeometry> outputs;
};

} // namespace orvantile::platform::wayland
