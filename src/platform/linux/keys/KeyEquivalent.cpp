#include "platform/linux/keys/KeyEquivalent.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::platform::keys {
namespace {

using Qt::StringLiterals::operator""_s;

struct Glyph {
    KeySymbol symbol;
    std::int64_t code;
};

/// Menu glyph codes of the keys that have one.
constexpr auto glyphs = std::to_array<Glyph>({
    {XKB_KEY_Tab, 2},
    {XKB_KEY_KP_Tab, 2},
    {XKB_KEY_ISO_Left_Tab, 3},
    {XKB_KEY_KP_Enter, 4},
    {XKB_KEY_space, 9},
    {XKB_KEY_KP_Space, 9},
    {XKB_KEY_Delete, 10},
    {XKB_KEY_KP_Delete, 10},
    {XKB_KEY_Return, 11},
    {XKB_KEY_BackSpace, 23},
    {XKB_KEY_Page_Up, 98},
    {XKB_KEY_KP_Page_Up, 98},
    {XKB_KEY_Caps_Lock, 99},
    {XKB_KEY_Left, 100},
    {XKB_KEY_KP_Left, 100},
    {XKB_KEY_Right, 101},
    {XKB_KEY_KP_Right, 101},
    {XKB_KEY_Help, 103},
    {XKB_KEY_Up, 104},
    {XKB_KEY_KP_Up, 104},
    {XKB_KEY_Down, 106},
    {XKB_KEY_KP_Down, 106},
    {XKB_KEY_Page_Down, 107},
    {XKB_KEY_KP_Page_Down, 107},
    {XKB_KEY_XF86PowerOff, 110},
    {XKB_KEY_XF86PowerDown, 110},
    {XKB_KEY_KP_F1, 111},
    {XKB_KEY_KP_F2, 112},
    {XKB_KEY_KP_F3, 113},
    {XKB_KEY_KP_F4, 114},
    {XKB_KEY_XF86Eject, 140},
    {XKB_KEY_Escape, 141},
});

struct KeyCap {
    KeySymbol symbol;
    QStringView text;
};

/// What is printed on keys that type nothing.
constexpr auto keyCaps = std::to_array<KeyCap>({
    {XKB_KEY_Home, u"↖"},
    {XKB_KEY_KP_Home, u"↖"},
    {XKB_KEY_End, u"↘"},
    {XKB_KEY_KP_End, u"↘"},
    {XKB_KEY_Insert, u"Insert"},
    {XKB_KEY_KP_Insert, u"Insert"},
    {XKB_KEY_Menu, u"Menu"},
    {XKB_KEY_Print, u"Print"},
    {XKB_KEY_Sys_Req, u"SysRq"},
    {XKB_KEY_Pause, u"Pause"},
    {XKB_KEY_Break, u"Break"},
    {XKB_KEY_Scroll_Lock, u"Scroll Lock"},
    {XKB_KEY_Num_Lock, u"Num Lock"},
    {XKB_KEY_Clear, u"Clear"},
    {XKB_KEY_KP_Begin, u"Clear"},
    {XKB_KEY_Begin, u"Begin"},
    {XKB_KEY_Select, u"Select"},
    {XKB_KEY_Execute, u"Execute"},
    {XKB_KEY_Undo, u"Undo"},
    {XKB_KEY_Redo, u"Redo"},
    {XKB_KEY_Find, u"Find"},
    {XKB_KEY_Cancel, u"Cancel"},
    {XKB_KEY_KP_Separator, u","},

    {XKB_KEY_XF86AudioPlay, u"Play"},
    {XKB_KEY_XF86AudioPause, u"Pause"},
    {XKB_KEY_XF86AudioStop, u"Stop"},
    {XKB_KEY_XF86AudioNext, u"Next"},
    {XKB_KEY_XF86AudioPrev, u"Previous"},
    {XKB_KEY_XF86AudioRewind, u"Rewind"},
    {XKB_KEY_XF86AudioForward, u"Forward"},
    {XKB_KEY_XF86AudioRecord, u"Record"},
    {XKB_KEY_XF86AudioMute, u"Mute"},
    {XKB_KEY_XF86AudioLowerVolume, u"Volume Down"},
    {XKB_KEY_XF86AudioRaiseVolume, u"Volume Up"},
    {XKB_KEY_XF86AudioMicMute, u"Microphone"},
    {XKB_KEY_XF86MonBrightnessUp, u"Brightness Up"},
    {XKB_KEY_XF86MonBrightnessDown, u"Brightness Down"},
    {XKB_KEY_XF86Back, u"Back"},
    {XKB_KEY_XF86Forward, u"Forward"},
    {XKB_KEY_XF86Reload, u"Reload"},
    {XKB_KEY_XF86HomePage, u"Home Page"},
    {XKB_KEY_XF86Mail, u"Mail"},
    {XKB_KEY_XF86WWW, u"Web"},

    {XKB_KEY_dead_grave, u"`"},
    {XKB_KEY_dead_acute, u"´"},
    {XKB_KEY_dead_circumflex, u"^"},
    {XKB_KEY_dead_tilde, u"~"},
    {XKB_KEY_dead_macron, u"¯"},
    {XKB_KEY_dead_breve, u"˘"},
    {XKB_KEY_dead_abovedot, u"˙"},
    {XKB_KEY_dead_diaeresis, u"¨"},
    {XKB_KEY_dead_abovering, u"˚"},
    {XKB_KEY_dead_doubleacute, u"˝"},
    {XKB_KEY_dead_caron, u"ˇ"},
    {XKB_KEY_dead_cedilla, u"¸"},
    {XKB_KEY_dead_ogonek, u"˛"},
});

/// F1 to F12 and F13 to F15 are two runs of codes.
std::optional<std::int64_t> glyphOf(KeySymbol symbol) {
    if (symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F12) {
        return 111 + (symbol - XKB_KEY_F1);
    }
    if (symbol >= XKB_KEY_F13 && symbol <= XKB_KEY_F15) {
        return 135 + (symbol - XKB_KEY_F13);
    }
    const auto* found = std::ranges::find(glyphs, symbol, &Glyph::symbol);
    return found == glyphs.end() ? std::nullopt : std::optional(found->code);
}

QString characterOf(KeySymbol symbol) {
    if (const auto* cap = std::ranges::find(keyCaps, symbol, &KeyCap::symbol); cap != keyCaps.end()) {
        return cap->text.toString();
    }
    if (const char32_t character = xkb_keysym_to_utf32(symbol); character > U' ' && character != 0x7f) {
        return QString::fromUcs4(&character, 1);
    }
    std::array<char, 64> name{};
    if (xkb_keysym_get_name(symbol, name.data(), name.size()) <= 0) {
        return {};
    }
    auto text = QString::fromLatin1(name.data());
    for (const auto& prefix : {u"XF86"_s, u"KP_"_s, u"ISO_"_s}) {
        if (text.startsWith(prefix)) {
            text.remove(0, prefix.size());
        }
    }
    return text.replace(u'_', u' ');
}

} // namespace

KeyEquivalent keyEquivalent(const Accelerator& accelerator) {
    const auto& held = accelerator.modifiers;
    KeyEquivalent equivalent;
    equivalent.modifiers = (held.control ? KeyEquivalent::control : 0) |
                           (held.alt ? KeyEquivalent::option : 0) | (held.shift ? KeyEquivalent::shift : 0) |
                           (held.super ? 0 : KeyEquivalent::withoutCommand);
    if (accelerator.symbol == XKB_KEY_NoSymbol) {
        return equivalent;
    }
    if (const auto glyph = glyphOf(accelerator.symbol)) {
        equivalent.glyph = glyph;
    } else if (auto character = characterOf(accelerator.symbol); !character.isEmpty()) {
        equivalent.character = std::move(character);
    }
    return equivalent;
}

} // namespace orvantile::platform::keys
