#pragma once

#include "platform/Geometry.h"

#include <optional>
#include <vector>

namespace orvantile::platform {

struct Screen {
    Rect frame;        ///< the whole screen
    Rect visibleFrame; ///< without panels, docks and menu bars
    double scale = 1;  ///< device pixels per point

    friend bool operator==(const Screen&, const Screen&) = default;
};

/// The screens of the desktop at this moment. Main thread only.
class Screens {
public:
    Screens() = default;
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;
    virtual ~Screens() = default;

    /// The screen that holds the focused window; absent while there is none.
    [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;
};

} // namespace orvantile::platform
