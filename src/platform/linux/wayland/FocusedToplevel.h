#pragma once

#include <QString>
#include <cstdint>

namespace orvantile::platform::wayland {

/// The window that the compositor says has the focus.
struct FocusedToplevel {
    std::uint64_t number = 0; ///< of the window in the compositor's list; 0 when no window has the focus
    QString title;
    QString applicationId;

    friend bool operator==(const FocusedToplevel&, const FocusedToplevel&) = default;
};

} // namespace orvantile::platform::wayland
