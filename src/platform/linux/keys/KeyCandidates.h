#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <xkbcommon/xkbcommon.h>

namespace orvantile::platform::keys {

/// What pressing the key `code` may mean as a shortcut while the keyboard is in `state`, most exact first:
/// 1. all modifiers with the symbol the key gives now,
/// 2. all modifiers with the symbol it gives without any,
/// 3. without Shift, when Shift was needed for the symbol (not for the capital of a letter),
/// 4. a backward Tab as Tab,
/// 5. all modifiers with the ASCII symbol it gives in every other layout, if the layout in force has no key
///    for that symbol: Control+Z works while a layout of another script is in force, and Z and Y stay apart
///    where two Latin layouts have swapped them.
/// Empty for modifier keys and for keys that type text. The third level of a layout (AltGr) is no modifier.
[[nodiscard]] Candidates keyCandidates(xkb_state* state, xkb_keycode_t code);

/// The same for a key of which no more is known than the symbol it gives now: that, without Shift as well
/// when Shift may have been needed for it, and a backward Tab as Tab.
[[nodiscard]] Candidates symbolCandidates(const Modifiers& modifiers, KeySymbol symbol);

} // namespace orvantile::platform::keys
