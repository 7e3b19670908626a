#include "platform/linux/wayland/SeatKeymap.h"

#include "platform/linux/desktop/FileDescriptor.h"
#include "platform/linux/keys/KeyCandidates.h"

#include <sys/mman.h>

namespace orvantile::platform::wayland {
namespace {

constexpr std::uint32_t longestKeymap = 1U << 20U; // bytes

enum Modifier : std::uint32_t { shift = 1, control = 4, alt = 8, super = 64 };

keys::Modifiers named(std::uint32_t modifiers) {
    return {.control = (modifiers & control) != 0,
            .alt = (modifiers & alt) != 0,
            .shift = (modifiers & shift) != 0,
            .super = (modifiers & super) != 0};
}

} // namespace

SeatKeymap::SeatKeymap() : context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {}

void SeatKeymap::follow(const Globals& globals) {
    static constexpr wl_seat_listener listener{.capabilities =
                                                   [](void* data, wl_seat*, std::uint32_t capabilities) {
                                                       static_cast<SeatKeymap*>(data)->setKeyboard(
                                                           (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
                                                   },
                                               .name = [](void*, wl_seat*, const char*) {}};
    seat = globals.bindSeat();
    if (seat && context != nullptr) {
        wl_seat_add_listener(seat.get(), &listener, this);
    }
}

void SeatKeymap::setKeyboard(bool present) {
    static constexpr wl_keyboard_listener listener{
        .keymap =
            [](void* data, wl_keyboard*, std::uint32_t format, int descriptor, std::uint32_t size) {
                const desktop::FileDescriptor file(descriptor);
                if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1) {
                    static_cast<SeatKeymap*>(data)->loadFile(file.get(), size);
                }
            },
        .enter = [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
        .leave = [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
        .key = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {},
        .modifiers = [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
                        std::uint32_t) {},
        .repeat_info = [](void*, wl_keyboard*, std::int32_t, std::int32_t) {}};
    if (!present) {
        keyboard.reset();
    } else if (!keyboard) {
        keyboard.reset(wl_seat_get_keyboard(seat.get()));
        wl_keyboard_add_listener(keyboard.get(), &listener, this);
    }
}

void SeatKeymap::loadFile(int descriptor, std::uint32_t size) {
    if (size == 0 || size > longestKeymap) {
        return;
    }
    void* const memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (memory == MAP_FAILED) {
        return;
    }
    std::string text(static_cast<const char*>(memory), size);
    munmap(memory, size);
    load(text);
}

void SeatKeymap::load(const std::string& text) {
    decltype(keymap) fresh(
        xkb_keymap_new_from_buffer(context.get(), text.c_str(), std::char_traits<char>::length(text.c_str()),
                                   XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (fresh != nullptr) {
        keymap = std::move(fresh);
        ++loads;
    }
}

keys::Candidates SeatKeymap::candidates(keys::KeySymbol symbol, std::uint32_t code,
                                        std::uint32_t modifiers) const {
    if (keymap != nullptr) {
        const auto state = makeState();
        for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap.get(), code);
             ++layout) {
            xkb_state_update_mask(state.get(), modifiers, 0, 0, 0, 0, layout);
            if (xkb_state_key_get_one_sym(state.get(), code) == symbol) {
                return keys::keyCandidates(state.get(), code);
            }
        }
    }
    return keys::symbolCandidates(named(modifiers), symbol);
}

} // namespace orvantile::platform::wayland
