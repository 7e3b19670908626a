#include "support/desktop/KeyInjector.h"

#include <QStringList>
#include <algorithm>
#include <array>
#include <stdexcept>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

// The header of this extension uses a C++ keyword as a name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace orvantile::test {
namespace {

xkb_keysym_t symbolNamed(const QString& name) {
    static const std::map<QString, xkb_keysym_t> modifiers{
        {QStringLiteral("Ctrl"), XKB_KEY_Control_L},
        {QStringLiteral("Alt"), XKB_KEY_Alt_L},
        {QStringLiteral("Shift"), XKB_KEY_Shift_L},
        {QStringLiteral("Super"), XKB_KEY_Super_L},
        {QStringLiteral("AltGr"), XKB_KEY_ISO_Level3_Shift}};
    if (const auto found = modifiers.find(name); found != modifiers.end()) {
        return found->second;
    }
    const auto characters = name.toUcs4();
    if (characters.size() == 1) {
        // A combination names its letter in upper case, and means the key.
        return xkb_utf32_to_keysym(QChar::toLower(characters.front()));
    }
    return xkb_keysym_from_name(name.toUtf8().constData(), XKB_KEYSYM_CASE_INSENSITIVE);
}

QStringList partsOf(const QString& combination) {
    QStringList parts = combination.split(u'+');
    if (combination.endsWith(u'+')) {
        parts.resize(parts.size() - 2);
        parts.append(QStringLiteral("+"));
    }
    return parts;
}

} // namespace

KeyInjector::KeyInjector(const QString& display)
    : x(display),
      context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    xkb_x11_setup_xkb_extension(x.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    loadKeymap();
}

KeyInjector::~KeyInjector() = default;

void KeyInjector::press(const QString& combination) {
    loadKeymap();
    QStringList parts = partsOf(combination);
    Stroke stroke = strokeFor(parts.takeLast());
    for (const QString& part : parts) {
        const xkb_keycode_t modifier = keyOf(symbolNamed(part));
        std::erase(stroke.modifiers, modifier);
        stroke.modifiers.insert(stroke.modifiers.begin(), modifier);
    }
    strike(stroke);
    x.synchronize();
}

void KeyInjector::hold(const QString& key) {
    loadKeymap();
    send(XCB_KEY_PRESS, static_cast<std::uint8_t>(strokeFor(key).key));
    x.synchronize();
}

void KeyInjector::release(const QString& key) {
    loadKeymap();
    send(XCB_KEY_RELEASE, static_cast<std::uint8_t>(strokeFor(key).key));
    x.synchronize();
}

void KeyInjector::type(const QString& text) {
    loadKeymap();
    for (const char32_t character : text.toUcs4()) {
        const xkb_keysym_t symbol =
            character == U'\n' ? xkb_keysym_t{XKB_KEY_Return} : xkb_utf32_to_keysym(character);
        const auto stroke = strokeIn(activeLayout, symbol);
        if (!stroke) {
            throw std::runtime_error("the active layout cannot type " + text.toStdString());
        }
        strike(*stroke);
    }
    x.synchronize();
}

void KeyInjector::lockLayout(int layout) {
    xcb_xkb_latch_lock_state(x.get(), XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, static_cast<std::uint8_t>(layout), 0,
                             0, 0);
    x.synchronize();
}

void KeyInjector::moveTo(QPoint position) {
    send(XCB_MOTION_NOTIFY, 0, position);
    x.synchronize();
}

void KeyInjector::click(QPoint position, std::uint8_t button) {
    moveTo(position);
    send(XCB_BUTTON_PRESS, button);
    send(XCB_BUTTON_RELEASE, button);
    x.synchronize();
}

void KeyInjector::holdButton(std::uint8_t button) {
    send(XCB_BUTTON_PRESS, button);
    x.synchronize();
}

void KeyInjector::releaseButton(std::uint8_t button) {
    send(XCB_BUTTON_RELEASE, button);
    x.synchronize();
}

void KeyInjector::loadKeymap() {
    const auto device = xkb_x11_get_core_keyboard_device_id(x.get());
    keymap.reset(xkb_x11_keymap_new_from_device(context.get(), x.get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
    const XReply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(x.get(), xcb_xkb_get_state(x.get(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
    if (!keymap || !state) {
        throw std::runtime_error("the X server has no keyboard");
    }
    activeLayout = state->group;
}

KeyInjector::Stroke KeyInjector::strokeFor(const QString& key) const {
    const xkb_keysym_t symbol = symbolNamed(key);
    if (symbol != XKB_KEY_NoSymbol) {
        if (auto stroke = strokeIn(activeLayout, symbol)) {
            return *stroke;
        }
        for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts(keymap.get()); ++layout) {
            if (auto stroke = strokeIn(layout, symbol)) {
                return *stroke;
            }
        }
    }
    throw std::runtime_error("no key on this keyboard makes " + key.toStdString());
}

std::optional<KeyInjector::Stroke> KeyInjector::strokeIn(xkb_layout_index_t layout,
                                                         xkb_keysym_t symbol) const {
    std::optional<Stroke> best;
    const xkb_keycode_t last = xkb_keymap_max_keycode(keymap.get());
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap.get()); key <= last; ++key) {
        const xkb_layout_index_t own = xkb_keymap_num_layouts_for_key(keymap.get(), key);
        if (own == 0) {
            continue;
        }
        const xkb_layout_index_t effective = std::min(layout, own - 1);
        const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap.get(), key, effective);
        for (xkb_level_index_t level = 0; level < levels; ++level) {
            const xkb_keysym_t* symbols = nullptr;
            const int count = xkb_keymap_key_get_syms_by_level(keymap.get(), key, effective, level, &symbols);
            if (count != 1 || symbols[0] != symbol) {
                continue;
            }
            auto modifiers = modifiersFor(key, effective, level);
            if (modifiers && (!best || modifiers->size() < best->modifiers.size())) {
                best = Stroke{key, std::move(*modifiers)};
            }
        }
    }
    return best;
}

std::optional<std::vector<xkb_keycode_t>>
KeyInjector::modifiersFor(xkb_keycode_t key, xkb_layout_index_t layout, xkb_level_index_t level) const {
    if (level == 0) {
        return std::vector<xkb_keycode_t>{};
    }
    std::array<xkb_mod_mask_t, 16> masks{};
    const std::size_t count =
        xkb_keymap_key_get_mods_for_level(keymap.get(), key, layout, level, masks.data(), masks.size());
    const auto bit = [this](const char* name) {
        return xkb_mod_mask_t{1} << xkb_keymap_mod_get_index(keymap.get(), name);
    };
    const xkb_mod_mask_t shift = bit(XKB_MOD_NAME_SHIFT);
    const xkb_mod_mask_t levelThree = bit("Mod5");
    for (std::size_t index = 0; index < count; ++index) {
        if ((masks[index] & ~(shift | levelThree)) != 0) {
            continue;
        }
        std::vector<xkb_keycode_t> keys;
        if ((masks[index] & shift) != 0) {
            keys.push_back(keyOf(XKB_KEY_Shift_L));
        }
        if ((masks[index] & levelThree) != 0) {
            keys.push_back(keyOf(XKB_KEY_ISO_Level3_Shift));
        }
        return keys;
    }
    return std::nullopt;
}

xkb_keycode_t KeyInjector::keyOf(xkb_keysym_t symbol) const {
    const auto stroke = strokeIn(0, symbol);
    if (!stroke) {
        throw std::runtime_error("the keyboard lacks a modifier key");
    }
    return stroke->key;
}

void KeyInjector::strike(const Stroke& stroke) const {
    for (const xkb_keycode_t modifier : stroke.modifiers) {
        send(XCB_KEY_PRESS, static_cast<std::uint8_t>(modifier));
    }
    send(XCB_KEY_PRESS, static_cast<std::uint8_t>(stroke.key));
    send(XCB_KEY_RELEASE, static_cast<std::uint8_t>(stroke.key));
    for (auto modifier = stroke.modifiers.rbegin(); modifier != stroke.modifiers.rend(); ++modifier) {
        send(XCB_KEY_RELEASE, static_cast<std::uint8_t>(*modifier));
    }
}

void KeyInjector::send(std::uint8_t type, std::uint8_t detail, QPoint position) const {
    xcb_test_fake_input(x.get(), type, detail, XCB_CURRENT_TIME, x.root(),
                        static_cast<std::int16_t>(position.x()), static_cast<std::int16_t>(position.y()), 0);
}

} // namespace orvantile::test
