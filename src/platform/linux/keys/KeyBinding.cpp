#include "platform/linux/keys/KeyBinding.h"

#include "platform/linux/keys/ModifierNames.h"

#include <QByteArray>
#include <QString>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::platform::keys {
namespace {

/// No toolkit writes more than about a hundred characters.
constexpr qsizetype longestBinding = 512;
constexpr qsizetype longestSymbolName = 64;

/// The highest number that the protocol allows for a symbol; the library also reads higher ones.
constexpr KeySymbol highestSymbol = 0x1fffffff;

KeySymbol symbolOfCharacter(char32_t character) {
    switch (character) {
    case U'\t':
        return XKB_KEY_Tab;
    case U'\n':
    case U'\r':
        return XKB_KEY_Return;
    case QChar::ReplacementCharacter: // what half a character reads as
        return XKB_KEY_NoSymbol;
    default:
        return xkb_utf32_to_keysym(character);
    }
}

/// The symbol that `name` names: XKB's name for it, or the one character that it types.
KeySymbol symbolNamed(QStringView name) {
    if (name.isEmpty() || name.size() > longestSymbolName) {
        return XKB_KEY_NoSymbol;
    }
    if (const auto characters = name.toUcs4(); characters.size() == 1) {
        return symbolOfCharacter(characters.front());
    }
    const QByteArray latin = name.toLatin1();
    if (const auto exact = xkb_keysym_from_name(latin.constData(), XKB_KEYSYM_NO_FLAGS);
        exact != XKB_KEY_NoSymbol) {
        return exact;
    }
    return xkb_keysym_from_name(latin.constData(), XKB_KEYSYM_CASE_INSENSITIVE);
}

std::optional<Accelerator> accelerator(Modifiers modifiers, QStringView name) {
    auto symbol = symbolNamed(name);
    if (symbol == XKB_KEY_NoSymbol || symbol == XKB_KEY_VoidSymbol || symbol > highestSymbol) {
        return std::nullopt;
    }
    // Shift turns Tab into a symbol of its own; the item means the key.
    if (symbol == XKB_KEY_ISO_Left_Tab) {
        symbol = XKB_KEY_Tab;
    }
    return Accelerator{modifiers, xkb_keysym_to_lower(symbol)};
}

/// "Ctrl+Shift+S"; the key itself may be the plus sign.
std::optional<Accelerator> parseJoined(QStringView text) {
    Modifiers modifiers;
    while (text.size() > 1) {
        const auto end = text.indexOf(u'+', 1);
        if (end < 0 || end + 1 == text.size()) {
            break;
        }
        const auto modifier = modifierNamed(text.first(end).trimmed());
        if (!modifier) {
            return std::nullopt;
        }
        modifiers = modifiers | *modifier;
        text = text.sliced(end + 1);
    }
    return accelerator(modifiers, text);
}

/// Whether the field is a path of mnemonics without its separators, as LibreOffice's own menus write it
/// ("<Alt>oxz").
bool lacksSeparators(QStringView path) {
    const auto keys = path.sliced(path.lastIndexOf(u'>') + 1);
    return keys.size() > 1 && !keys.contains(u':');
}

struct Fields {
    QStringView mnemonic;
    QStringView path;
    QStringView keys;
};

std::optional<Fields> fieldsOf(QStringView binding) {
    if (binding.size() > longestBinding) {
        return std::nullopt;
    }
    const auto first = binding.indexOf(u';');
    const auto second = first < 0 ? -1 : binding.indexOf(u';', first + 1);
    if (second < 0) {
        return std::nullopt;
    }
    return Fields{binding.first(first), binding.sliced(first + 1, second - first - 1),
                  binding.sliced(second + 1)};
}

bool hidesAccelerator(const Fields& fields) {
    if (!lacksSeparators(fields.path)) {
        return false;
    }
    const auto parsed = parseAccelerator(fields.keys);
    return parsed && parsed->symbol == xkb_keysym_to_lower(symbolNamed(fields.mnemonic));
}

} // namespace

std::optional<Accelerator> parseAccelerator(QStringView text) {
    if (text.size() > longestBinding) {
        return std::nullopt;
    }
    if (!text.startsWith(u'<') || text.size() == 1) {
        return parseJoined(text);
    }
    Modifiers modifiers;
    while (text.size() > 1 && text.startsWith(u'<')) {
        const auto end = text.indexOf(u'>');
        const auto modifier =
            end < 0 ? std::optional<Modifiers>() : modifierNamed(text.sliced(1, end - 1).trimmed());
        if (!modifier) {
            return std::nullopt;
        }
        modifiers = modifiers | *modifier;
        text = text.sliced(end + 1);
    }
    return accelerator(modifiers, text);
}

std::optional<Accelerator> parseKeyBinding(QStringView binding) {
    const auto fields = fieldsOf(binding);
    return fields && !hidesAccelerator(*fields) ? parseAccelerator(fields->keys) : std::nullopt;
}

bool hidesAccelerator(QStringView binding) {
    const auto fields = fieldsOf(binding);
    return fields && hidesAccelerator(*fields);
}

} // namespace orvantile::platform::keys
