#include "platform/linux/wayland/OutputLayout.h"

#include <cmath>
#include <utility>

namespace orvantile::platform::wayland {

double OutputGeometry::scale() const {
    // The size in points is rounded, so that the scale can be told from it only roughly.
    constexpr double steps = 120;
    const bool isKnown = logical.width() > 0 && pixels.width() > 0;
    return isKnown ? std::round(steps * pixels.width() / logical.width()) / steps : bufferScale;
}

OutputLayout::OutputLayout(std::vector<OutputGeometry> outputs_) : outputs(std::move(outputs_)) {}

Screen OutputLayout::screen(std::size_t index) const {
    const auto& first = outputs.front().logical;
    const auto& output = outputs.at(index);
    const auto& place = output.logical;
    const Rect frame{double{1} * (place.x() - first.x()),
                     double{1} * (first.y() + first.height() - place.y() - place.height()),
                     double{1} * place.width(), double{1} * place.height()};
    return {frame, frame, output.scale()};
}

std::vector<Screen> OutputLayout::screens() const {
    std::vector<Screen> all;
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        all.push_back(screen(index));
    }
    return all;
}

} // namespace orvantile::platform::wayland
