#pragma once

#include "platform/Activation.h"

namespace orvantile::platform::macos {

/// Brings a window of the toolkit to the front together with the program, which as an accessory would stay
/// behind. Such a window can be closed and miniaturized, but not resized: its content decides.
class MacActivation final : public Activation {
public:
    /// Without an application object the program stops.
    void bringToFront(std::uintptr_t window) override;
};

} // namespace orvantile::platform::macos
