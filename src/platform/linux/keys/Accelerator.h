#pragma once

#include <compare>
#include <cstdint>
#include <vector>

namespace orvantile::platform::keys {

/// A key symbol as XKB numbers them (keysymdef.h).
using KeySymbol = std::uint32_t;

/// A set of modifier keys.
struct Modifiers {
    bool control = false;
    bool alt = false;
    bool shift = false;
    bool super = false;

    friend auto operator<=>(const Modifiers&, const Modifiers&) = default;
};

/// A key combination: what a menu item declares, and what a key press may mean. The symbol is lower case.
struct Accelerator {
    Modifiers modifiers;
    KeySymbol symbol = 0;

    friend auto operator<=>(const Accelerator&, const Accelerator&) = default;
};

/// What one key press may mean, most exact first.
using Candidates = std::vector<Accelerator>;

} // namespace orvantile::platform::keys
