#include "platform/linux/wayland/WaylandScreens.h"

#include <algorithm>

namespace orvantile::platform::wayland {

std::size_t WaylandScreens::mainIndex() const {
    const auto names = outputs.names();
    const auto main = std::ranges::find(names, focused.name());
    return main == names.end() ? 0 : static_cast<std::size_t>(main - names.begin());
}

std::optional<Screen> WaylandScreens::mainScreen() const {
    return outputs.layout().screen(mainIndex());
}

std::vector<Screen> WaylandScreens::screens() const {
    return outputs.layout().screens();
}

WaylandScreens::Placement WaylandScreens::place(const Rect& panel) const {
    const auto names = outputs.names();
    if (names.empty()) {
        return {}; // every screen is off
    }
    const auto all = screens();
    const auto main = mainIndex();
    const auto at = [&](std::size_t index, std::uint32_t output) {
        return Placement{output, placeAtEdges(panel, all[index].frame), all[index].scale};
    };
    if (const auto placed = at(main, focused.name()); !placed.edges.size.isEmpty()) {
        return placed;
    }
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (const auto placed = at(index, names[index]); !placed.edges.size.isEmpty()) {
            return placed;
        }
    }
    return {};
}

} // namespace orvantile::platform::wayland
