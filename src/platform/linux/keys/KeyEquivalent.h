#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <QString>
#include <cstdint>
#include <optional>

namespace orvantile::platform::keys {

/// An accelerator as the attributes of a menu item tell it.
struct KeyEquivalent {
    std::optional<QString> character;        ///< what the key types, or what is printed on it
    std::optional<std::int64_t> glyph;       ///< code of a key that menus draw as a symbol
    std::int64_t modifiers = withoutCommand; ///< bits below

    static constexpr std::int64_t shift = 1;
    static constexpr std::int64_t option = 2;
    static constexpr std::int64_t control = 4;
    static constexpr std::int64_t withoutCommand = 8;
};

/// Alt is Option, Super is Command. Keys without a character or a symbol give the name printed on them.
[[nodiscard]] KeyEquivalent keyEquivalent(const Accelerator& accelerator);

} // namespace orvantile::platform::keys
