#pragma once

#include "platform/Backdrop.h"

namespace orvantile::platform::macos {

/// The window server blurs by itself: a panel puts a view of the system's material under its content.
class MacBackdrop final : public Backdrop {
public:
    [[nodiscard]] BackdropPicture behind(const Rect&) override { return CompositorBlurs{}; }
};

} // namespace orvantile::platform::macos
