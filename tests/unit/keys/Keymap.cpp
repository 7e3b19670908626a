#include "unit/keys/Keymap.h"

#include <array>
#include <stdexcept>

namespace orvantile::test {

Keymap::Keymap(const std::string& layouts, const std::string& variants, const std::string& options)
    : context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    const xkb_rule_names names{"evdev", "pc105", layouts.c_str(), variants.c_str(), options.c_str()};
    keymap.reset(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap) {
        throw std::runtime_error("no keymap for " + layouts);
    }
    state.reset(xkb_state_new(keymap.get()));
}

xkb_keycode_t Keymap::codeOf(const std::string& key) const {
    const auto code = xkb_keymap_key_by_name(keymap.get(), key.c_str());
    if (code == XKB_KEYCODE_INVALID) {
        throw std::runtime_error("no key " + key);
    }
    return code;
}

void Keymap::hold(const std::string& key) {
    xkb_state_update_key(state.get(), codeOf(key), XKB_KEY_DOWN);
}

void Keymap::release(const std::string& key) {
    xkb_state_update_key(state.get(), codeOf(key), XKB_KEY_UP);
}

void Keymap::tap(const std::string& key) {
    hold(key);
    release(key);
}

void Keymap::lockLayout(xkb_layout_index_t layout) {
    xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, layout);
}

platform::keys::Candidates Keymap::candidates(const std::string& key) const {
    return platform::keys::keyCandidates(state.get(), codeOf(key));
}

std::vector<std::string> Keymap::described(const std::string& key) const {
    std::vector<std::string> lines;
    for (const auto& candidate : candidates(key)) {
        std::array<char, 64> name{};
        xkb_keysym_get_name(candidate.symbol, name.data(), name.size());
        const auto& modifiers = candidate.modifiers;
        lines.push_back(std::string(modifiers.control ? "Ctrl+" : "") + (modifiers.alt ? "Alt+" : "") +
                        (modifiers.shift ? "Shift+" : "") + (modifiers.super ? "Super+" : "") + name.data());
    }
    return lines;
}

} // namespace orvantile::test
