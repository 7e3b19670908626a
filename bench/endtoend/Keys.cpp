#include "endtoend/Keys.h"

#include <stdexcept>

namespace orvantile::bench {

std::uint8_t keyOf(const test::XConnection& x, xcb_keysym_t symbol) {
    const auto* setup = xcb_get_setup(x.get());
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const test::XReply<xcb_get_keyboard_mapping_reply_t> mapping(xcb_get_keyboard_mapping_reply(
        x.get(), xcb_get_keyboard_mapping(x.get(), setup->min_keycode, count), nullptr));
    for (unsigned key = 0; mapping && key < count; ++key) {
        if (xcb_get_keyboard_mapping_keysyms(mapping.get())[key * mapping->keysyms_per_keycode] == symbol) {
            return static_cast<std::uint8_t>(setup->min_keycode + key);
        }
    }
    throw std::runtime_error("the keyboard lacks a key");
}

} // namespace orvantile::bench
