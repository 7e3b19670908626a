#include "platform/linux/x11/KeyCandidates.h"

#include <algorithm>
#include <array>
#include <utility>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::x11 {
namespace {

using SymbolRange = std::pair<xkb_keysym_t, xkb_keysym_t>;

bool isIn(const auto& ranges, xkb_keysym_t symbol) {
    return std::ranges::any_of(
        ranges, [&](const SymbolRange& range) { return symbol >= range.first && symbol <= range.second; });
}

bool isModifierKey(xkb_keysym_t symbol) {
    static constexpr std::array ranges{
        SymbolRange{XKB_KEY_ISO_Lock, XKB_KEY_ISO_Level5_Lock},
        SymbolRange{XKB_KEY_Mode_switch, XKB_KEY_Num_Lock},
        SymbolRange{XKB_KEY_Shift_L, XKB_KEY_Hyper_R},
    };
    return symbol == XKB_KEY_NoSymbol || isIn(ranges, symbol);
}

/// Keys that are shortcuts even by themselves. Everything else types text or composes it.
bool isFunctionOrNavigationKey(xkb_keysym_t symbol) {
    constexpr xkb_keysym_t firstMediaKey = 0x10081000;
    constexpr xkb_keysym_t lastMediaKey = 0x1008ffff;
    static constexpr std::array ranges{
        SymbolRange{XKB_KEY_ISO_Left_Tab, XKB_KEY_ISO_Left_Tab},
        SymbolRange{XKB_KEY_BackSpace, XKB_KEY_Tab},
        SymbolRange{XKB_KEY_Return, XKB_KEY_Return},
        SymbolRange{XKB_KEY_Pause, XKB_KEY_Sys_Req},
        SymbolRange{XKB_KEY_Escape, XKB_KEY_Escape},
        SymbolRange{XKB_KEY_Home, XKB_KEY_Begin},
        SymbolRange{XKB_KEY_Select, XKB_KEY_Break},
        SymbolRange{XKB_KEY_KP_Tab, XKB_KEY_KP_Delete}, // with the number lock off
        SymbolRange{XKB_KEY_F1, XKB_KEY_F35},
        SymbolRange{XKB_KEY_Delete, XKB_KEY_Delete},
        SymbolRange{firstMediaKey, lastMediaKey},
    };
    return isIn(ranges, symbol);
}

bool isActive(xkb_state* state, const char* modifier) {
    return xkb_state_mod_name_is_active(state, modifier, XKB_STATE_MODS_EFFECTIVE) > 0;
}

xkb_mod_mask_t maskOf(xkb_keymap* keymap, const char* modifier) {
    const auto index = xkb_keymap_mod_get_index(keymap, modifier);
    return index == XKB_MOD_INVALID ? 0 : xkb_mod_mask_t{1} << index;
}

xkb_keysym_t symbolAtLevel(xkb_keymap* keymap, xkb_keycode_t code, xkb_layout_index_t layout,
                           xkb_level_index_t level) {
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, code, layout, level, &symbols);
    return count == 1 ? symbols[0] : XKB_KEY_NoSymbol;
}

bool typesText(xkb_keysym_t symbol) {
    constexpr std::uint32_t blank = 0x20;
    constexpr std::uint32_t del = 0x7f;
    const auto character = xkb_keysym_to_utf32(symbol);
    return character >= blank && character != del;
}

/// Some layouts reach their third level with Alt itself: then Alt belongs to the text.
bool altSelectsText(xkb_state* state, xkb_keymap* keymap, xkb_keycode_t code, xkb_keysym_t symbol) {
    const auto consumed = xkb_state_key_get_consumed_mods2(state, code, XKB_CONSUMED_MODE_GTK);
    return (consumed & maskOf(keymap, XKB_MOD_NAME_ALT)) != 0 && typesText(symbol);
}

/// Whether some key gives `symbol` by itself in the layout.
bool layoutHas(xkb_keymap* keymap, xkb_layout_index_t layout, xkb_keysym_t symbol) {
    const auto last = xkb_keymap_max_keycode(keymap);
    for (auto code = xkb_keymap_min_keycode(keymap); code <= last; ++code) {
        if (symbolAtLevel(keymap, code, layout, 0) == symbol) {
            return true;
        }
    }
    return false;
}

} // namespace

keys::Candidates keyCandidates(xkb_state* state, xkb_keycode_t code) {
    auto* keymap = xkb_state_get_keymap(state);
    const auto effective = xkb_state_key_get_one_sym(state, code);
    if (isModifierKey(effective)) {
        return {};
    }
    keys::Modifiers modifiers{.control = isActive(state, XKB_MOD_NAME_CTRL),
                              .alt = isActive(state, XKB_MOD_NAME_ALT),
                              .shift = isActive(state, XKB_MOD_NAME_SHIFT),
                              .super = isActive(state, XKB_MOD_NAME_LOGO)};
    if (modifiers.alt && altSelectsText(state, keymap, code, effective)) {
        modifiers.alt = false;
    }
    const bool shortcut = modifiers.control || modifiers.alt || modifiers.super;
    if (!shortcut && !isFunctionOrNavigationKey(effective)) {
        return {};
    }

    keys::Candidates candidates;
    const auto add = [&](const keys::Modifiers& with, xkb_keysym_t symbol) {
        const keys::Accelerator candidate{with, xkb_keysym_to_lower(symbol)};
        if (symbol != XKB_KEY_NoSymbol && std::ranges::find(candidates, candidate) == candidates.end()) {
            candidates.push_back(candidate);
        }
    };
    const auto layout = xkb_state_key_get_layout(state, code);
    const auto plain = symbolAtLevel(keymap, code, layout, 0);
    add(modifiers, effective);
    add(modifiers, plain);
    const auto consumed = xkb_state_key_get_consumed_mods2(state, code, XKB_CONSUMED_MODE_GTK);
    const bool shiftConsumed = (consumed & maskOf(keymap, XKB_MOD_NAME_SHIFT)) != 0;
    if (modifiers.shift && shiftConsumed && xkb_keysym_to_lower(effective) != xkb_keysym_to_lower(plain)) {
        auto withoutShift = modifiers;
        withoutShift.shift = false;
        add(withoutShift, effective);
    }
    if (effective == XKB_KEY_ISO_Left_Tab) {
        add(modifiers, XKB_KEY_Tab);
    }
    constexpr xkb_keysym_t lastAscii = 0x7f;
    for (xkb_layout_index_t other = 0; other < xkb_keymap_num_layouts_for_key(keymap, code); ++other) {
        const auto symbol = symbolAtLevel(keymap, code, other, 0);
        if (other != layout && symbol < lastAscii && !layoutHas(keymap, layout, symbol)) {
            add(modifiers, symbol);
        }
    }
    return candidates;
}

} // namespace orvantile::platform::x11
