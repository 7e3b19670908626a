#pragma once

#include "platform/Screens.h"

namespace orvantile::platform::macos {

/// The screens as the system lists them; its coordinates are those of the seam.
class MacScreens final : public Screens {
public:
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    [[nodiscard]] std::vector<Screen> screens() const override;
};

} // namespace orvantile::platform::macos
