#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <QStringView>
#include <optional>

namespace orvantile::platform::keys {

/// The accelerator in a menu item's key binding as the accessibility bus gives it:
/// "mnemonic;path of mnemonics;accelerator", such as "n;<Alt>f:n;<Primary>n". Absent when the item has none
/// or when the text says nothing that can be relied on.
[[nodiscard]] std::optional<Accelerator> parseKeyBinding(QStringView binding);

/// Whether the binding repeats the mnemonic in the place of keys that it has no name for, as LibreOffice's
/// own menus do.
[[nodiscard]] bool hidesAccelerator(QStringView binding);

/// The accelerator alone: modifier names in angle brackets, then a key symbol's name or the character it
/// types ("<Shift><Control>F5", "<Primary>plus", "<Control>+"), or the same joined by plus signs
/// ("Strg+Umschalt+S").
[[nodiscard]] std::optional<Accelerator> parseAccelerator(QStringView text);

} // namespace orvantile::platform::keys
