#pragma once

#include "platform/linux/x11/Atoms.h"

#include <span>

namespace orvantile::platform::x11 {

/// Whether a window that keeps out of the window manager's hands and declares `types` is a menu. Toolkits
/// list a menu's kind beside others; some context menus declare nothing but "normal". Tool tips and windows
/// without any type are no menus.
[[nodiscard]] bool isMenu(std::span<const xcb_atom_t> types, const Atoms& atoms);

} // namespace orvantile::platform::x11
