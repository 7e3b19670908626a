#include "platform/linux/keys/KeyCandidates.h"

#include "platform/linux/keys/ShortcutKeys.h"

#include <algorithm>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::keys {
namespace {

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

Candidates keyCandidates(xkb_state* state, xkb_keycode_t code) {
    auto* keymap = xkb_state_get_keymap(state);
    const auto effective = xkb_state_key_get_one_sym(state, code);
    if (isModifierKey(effective)) {
        return {};
    }
    Modifiers modifiers{.control = isActive(state, XKB_MOD_NAME_CTRL),
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

    Candidates candidates;
    const auto add = [&](const Modifiers& with, xkb_keysym_t symbol) {
        const Accelerator candidate{with, xkb_keysym_to_lower(symbol)};
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

Candidates symbolCandidates(const Modifiers& modifiers, KeySymbol symbol) {
    const bool shortcut = modifiers.control || modifiers.alt || modifiers.super;
    if (isModifierKey(symbol) || (!shortcut && !isFunctionOrNavigationKey(symbol))) {
        return {};
    }
    const auto lower = xkb_keysym_to_lower(symbol);
    Candidates candidates{{modifiers, lower}};
    const bool letter = lower != xkb_keysym_to_upper(symbol);
    if (modifiers.shift && !letter && typesText(symbol)) {
        auto withoutShift = modifiers;
        withoutShift.shift = false;
        candidates.push_back({withoutShift, lower});
    }
    if (symbol == XKB_KEY_ISO_Left_Tab) {
        candidates.push_back({modifiers, XKB_KEY_Tab});
    }
    return candidates;
}

} // namespace orvantile::platform::keys
