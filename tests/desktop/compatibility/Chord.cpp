#include "desktop/compatibility/Chord.h"

#include <algorithm>
#include <array>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

struct Key {
    QStringView written; ///< by one of the toolkits
    QStringView symbol;  ///< name for the injector
    QStringView shown;
};

constexpr auto keys = std::to_array<Key>({
    {u"backspace", u"BackSpace", u"⌫"},
    {u"delete", u"Delete", u"⌦"},
    {u"del", u"Delete", u"⌦"},
    {u"kp_delete", u"KP_Delete", u"⌦"},
    {u"insert", u"Insert", u"INSERT"},
    {u"ins", u"Insert", u"INSERT"},
    {u"return", u"Return", u"⏎"},
    {u"enter", u"KP_Enter", u"⌅"},
    {u"kp_enter", u"KP_Enter", u"⌅"},
    {u"escape", u"Escape", u"⎋"},
    {u"esc", u"Escape", u"⎋"},
    {u"space", u"space", u"␣"},
    {u"tab", u"Tab", u"⇥"},
    {u"iso_left_tab", u"Tab", u"⇥"},
    {u"backtab", u"Tab", u"⇤"},
    {u"home", u"Home", u"↖"},
    {u"end", u"End", u"↘"},
    {u"page_up", u"Page_Up", u"⇞"},
    {u"prior", u"Page_Up", u"⇞"},
    {u"pgup", u"Page_Up", u"⇞"},
    {u"page up", u"Page_Up", u"⇞"},
    {u"page_down", u"Page_Down", u"⇟"},
    {u"next", u"Page_Down", u"⇟"},
    {u"pgdown", u"Page_Down", u"⇟"},
    {u"page down", u"Page_Down", u"⇟"},
    {u"left", u"Left", u"←"},
    {u"right", u"Right", u"→"},
    {u"up", u"Up", u"↑"},
    {u"down", u"Down", u"↓"},
    {u"menu", u"Menu", u"MENU"},
    {u"pause", u"Pause", u"PAUSE"},
    {u"print", u"Print", u"PRINT"},
    {u"plus", u"plus", u"+"},
    {u"minus", u"minus", u"-"},
    {u"equal", u"equal", u"="},
    {u"comma", u"comma", u","},
    {u"period", u"period", u"."},
    {u"slash", u"slash", u"/"},
    {u"backslash", u"backslash", u"\\"},
    {u"semicolon", u"semicolon", u";"},
    {u"colon", u"colon", u":"},
    {u"apostrophe", u"apostrophe", u"'"},
    {u"quotedbl", u"quotedbl", u"\""},
    {u"question", u"question", u"?"},
    {u"exclam", u"exclam", u"!"},
    {u"at", u"at", u"@"},
    {u"numbersign", u"numbersign", u"#"},
    {u"dollar", u"dollar", u"$"},
    {u"percent", u"percent", u"%"},
    {u"asciicircum", u"asciicircum", u"^"},
    {u"ampersand", u"ampersand", u"&"},
    {u"asterisk", u"asterisk", u"*"},
    {u"parenleft", u"parenleft", u"("},
    {u"parenright", u"parenright", u")"},
    {u"bracketleft", u"bracketleft", u"["},
    {u"bracketright", u"bracketright", u"]"},
    {u"braceleft", u"braceleft", u"{"},
    {u"braceright", u"braceright", u"}"},
    {u"underscore", u"underscore", u"_"},
    {u"grave", u"grave", u"`"},
    {u"asciitilde", u"asciitilde", u"~"},
    {u"bar", u"bar", u"|"},
    {u"less", u"less", u"<"},
    {u"greater", u"greater", u">"},
    {u"kp_add", u"KP_Add", u"+"},
    {u"kp_subtract", u"KP_Subtract", u"-"},
    {u"kp_multiply", u"KP_Multiply", u"*"},
    {u"kp_divide", u"KP_Divide", u"/"},
});

/// What is held; in the order in which it is shown.
struct Held {
    bool control = false;
    bool alt = false;
    bool shift = false;
    bool super = false;

    bool add(QStringView name) {
        const auto lower = name.toString().toLower();
        bool* const flag = lower == u"primary" || lower == u"control" || lower == u"ctrl" ? &control
                           : lower == u"alt" || lower == u"mod1"                          ? &alt
                           : lower == u"shift"                                            ? &shift
                           : lower == u"super" || lower == u"meta" || lower == u"mod4"    ? &super
                                                                                          : nullptr;
        if (flag != nullptr) {
            *flag = true;
        }
        return flag != nullptr;
    }
};

struct Stroke {
    QString pressed;
    QString shown;
};

std::optional<Key> keyNamed(QStringView name) {
    const auto* found = std::ranges::find_if(
        keys, [&](const Key& key) { return key.written.compare(name, Qt::CaseInsensitive) == 0; });
    return found == keys.end() ? std::nullopt : std::optional(*found);
}

bool isFunctionKey(QStringView name) {
    bool number = false;
    return name.size() > 1 && (name[0] == u'F' || name[0] == u'f') && name.sliced(1).toInt(&number) > 0 &&
           number;
}

std::optional<Stroke> strokeOf(const Held& held, const QString& key) {
    Stroke stroke;
    if (const auto named = keyNamed(key)) {
        stroke = {named->symbol.toString(), named->shown.toString()};
    } else if (key.size() == 1 || isFunctionKey(key)) {
        stroke = {key, key.toUpper()};
    } else {
        return std::nullopt;
    }
    QString symbols;
    const auto hold = [&](bool isHeld, QStringView name, QChar symbol) {
        if (isHeld) {
            stroke.pressed = name + u'+' + stroke.pressed;
            symbols += symbol;
        }
    };
    hold(held.control, u"Ctrl", u'⌃');
    hold(held.alt, u"Alt", u'⌥');
    hold(held.shift, u"Shift", u'⇧');
    hold(held.super, u"Super", u'⌘');
    stroke.shown.prepend(symbols);
    return stroke;
}

std::optional<Stroke> parseStroke(QString text) {
    Held held;
    while (text.size() > 1 && text.startsWith(u'<')) {
        const auto end = text.indexOf(u'>');
        if (end < 0 || !held.add(QStringView(text).sliced(1, end - 1))) {
            return std::nullopt;
        }
        text.remove(0, end + 1);
    }
    for (auto end = text.indexOf(u'+', 1); end > 0 && end + 1 < text.size(); end = text.indexOf(u'+', 1)) {
        if (!held.add(QStringView(text).first(end))) {
            return std::nullopt;
        }
        text.remove(0, end + 1);
    }
    return strokeOf(held, text);
}

} // namespace

std::optional<Chord> chordOf(const QString& keys) {
    Chord chord;
    QStringList shown;
    for (const auto& part : keys.split(u", "_s)) {
        const auto stroke = parseStroke(part);
        if (!stroke) {
            return std::nullopt;
        }
        chord.strokes.append(stroke->pressed);
        shown.append(stroke->shown);
    }
    chord.label = shown.join(u' ');
    return chord;
}

} // namespace orvantile::test
