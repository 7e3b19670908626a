#pragma once

#include <cstdint>

namespace orvantile::platform {

/// Brings the program's own windows to the front because the user has asked for them. Main thread only.
class Activation {
public:
    Activation() = default;
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;
    virtual ~Activation() = default;

    /// Puts the window in front of those of all applications, with the focus, even where the desktop keeps
    /// windows from taking the focus by themselves. `window` is the toolkit's identifier of a window that is
    /// shown. Takes effect later; nothing happens when the window has gone by then.
    virtual void bringToFront(std::uintptr_t window) = 0;
};

} // namespace orvantile::platform
