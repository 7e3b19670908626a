#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <QStringView>
#include <optional>

namespace orvantile::platform::keys {

/// The modifier that `name` means, whatever its case: toolkits write "Primary", "Control" or "Ctrl", and
/// assistive interfaces may have the name translated ("Strg", "Maj", "Umschalt"). Names of modifiers that
/// no accelerator here can hold ("Hyper", "Mod5") are absent, like those of unknown ones.
[[nodiscard]] std::optional<Modifiers> modifierNamed(QStringView name);

/// Both sets together.
[[nodiscard]] constexpr Modifiers operator|(Modifiers one, Modifiers other) {
    return {.control = one.control || other.control,
            .alt = one.alt || other.alt,
            .shift = one.shift || other.shift,
            .super = one.super || other.super};
}

} // namespace orvantile::platform::keys
