#pragma once

#include "platform/linux/keys/Accelerator.h"
#include "platform/linux/wayland/Globals.h"

#include <cstdint>
#include <memory>
#include <string>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::platform::wayland {

/// The keymap of the compositor's keyboard, which it tells to everybody. No key is ever heard through it.
class SeatKeymap {
public:
    SeatKeymap();

    /// Follows the keyboard of the compositor's seat, where it has one.
    void follow(const Globals& globals);

    /// Takes a keymap in the text format of XKB. What is none leaves the one in force.
    void load(const std::string& text);

    /// What a key press may mean as a shortcut. `modifiers` are the eight that every keymap has. Where the
    /// key does not give the symbol in any layout, the keymap is of another keyboard and only the symbol
    /// counts.
    [[nodiscard]] keys::Candidates candidates(keys::KeySymbol symbol, std::uint32_t code,
                                              std::uint32_t modifiers) const;

    /// Which keys are held down, of a keyboard with this keymap.
    struct ReleaseState {
        void operator()(xkb_state* state) const { xkb_state_unref(state); }
    };

    using State = std::unique_ptr<xkb_state, ReleaseState>;

    /// Null while there is no keymap. It does not follow changes: `edition` tells of them.
    [[nodiscard]] State makeState() const { return State(keymap ? xkb_state_new(keymap.get()) : nullptr); }

    [[nodiscard]] std::uint64_t edition() const { return loads; }

private:
    template <auto unreference>
    struct Unreference {
        void operator()(auto* object) const noexcept { unreference(object); }
    };

    void loadFile(int descriptor, std::uint32_t size);
    void setKeyboard(bool present);

    std::unique_ptr<xkb_context, Unreference<xkb_context_unref>> context;
    std::unique_ptr<xkb_keymap, Unreference<xkb_keymap_unref>> keymap;
    std::uint64_t loads = 0;
    Handle<wl_seat> seat;
    Handle<wl_keyboard> keyboard;
};

} // namespace orvantile::platform::wayland
