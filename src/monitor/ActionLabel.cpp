// The texts that a menu item's attributes give: its name and its key equivalent.

#include "monitor/ShortcutMonitor.h"

#include <array>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

/// Bits of the menu item modifier mask (accessibility interface, menu item modifiers).
enum ModifierBit : std::int64_t { shift = 1, option = 2, control = 4, noCommand = 8 };

constexpr std::int64_t firstGlyph = 2;
constexpr std::int64_t lastGlyph = 141;

struct Glyph {
    std::int64_t code;
    QStringView text;
};

/// Menu glyph codes. 141 shows Escape and 27 nothing: menus draw them the other way round, labels do not.
constexpr auto glyphs = std::to_array<Glyph>({
    {2, u"⇥"},     {3, u"⇤"},     {4, u"⌅"},     {9, u"␣"},     {10, u"⌦"},    {11, u"⏎"},
    {23, u"⌫"},    {98, u"⇞"},    {99, u"⇪"},    {100, u"←"},   {101, u"→"},   {103, u"?\u20DD"},
    {104, u"↑"},   {106, u"↓"},   {107, u"⇟"},   {110, u"⏻"}, {111, u"F1"},  {112, u"F2"},
    {113, u"F3"},  {114, u"F4"},  {115, u"F5"},  {116, u"F6"},  {117, u"F7"},  {118, u"F8"},
    {119, u"F9"},  {120, u"F10"}, {121, u"F11"}, {122, u"F12"}, {135, u"F13"}, {136, u"F14"},
    {137, u"F15"}, {140, u"⏏"},   {141, u"⎋"},
});

/// The table by code, so that a look-up is one index.
constexpr auto glyphByCode = [] {
    std::array<QStringView, lastGlyph - firstGlyph + 1> table;
    for (const auto& glyph : glyphs) {
        table[static_cast<std::size_t>(glyph.code - firstGlyph)] = glyph.text;
    }
    return table;
}();

template <typename Value>
std::optional<Value> copy(const platform::AccessibilityElement& element, QStringView name) {
    auto value = element.copyAttribute(name);
    if (auto* typed = std::get_if<Value>(&value)) {
        return std::move(*typed);
    }
    return std::nullopt;
}

QString modifierSymbols(std::optional<std::int64_t> mask) {
    if (!mask) {
        return u"⌘"_s; // a key without modifier information is taken to use Command
    }
    QString symbols;
    if (*mask & control) {
        symbols += u'⌃';
    }
    if (*mask & option) {
        symbols += u'⌥';
    }
    if (*mask & shift) {
        symbols += u'⇧';
    }
    if (!(*mask & noCommand)) {
        symbols += u'⌘';
    }
    return symbols;
}

} // namespace

std::optional<QString> ShortcutMonitor::glyphCharacter(std::int64_t code) {
    if (code < firstGlyph || code > lastGlyph) {
        return std::nullopt;
    }
    const auto text = glyphByCode[static_cast<std::size_t>(code - firstGlyph)];
    return text.isEmpty() ? std::nullopt : std::optional(text.toString());
}

std::optional<QString> ShortcutMonitor::title(const platform::AccessibilityElement& element) {
    return copy<QString>(element, u"AXTitle");
}

std::optional<QString> ShortcutMonitor::shortcutString(const platform::AccessibilityElement& element) {
    const auto character = copy<QString>(element, u"AXMenuItemCmdChar");
    const auto glyphCode = copy<std::int64_t>(element, u"AXMenuItemCmdGlyph");
    const auto modifiers = copy<std::int64_t>(element, u"AXMenuItemCmdModifiers");

    const auto glyph = glyphCharacter(glyphCode.value_or(0));
    const bool hasCharacter = character && !character->isEmpty();
    if (!hasCharacter && !glyph) {
        return std::nullopt;
    }
    return modifierSymbols(modifiers) + (glyph ? *glyph : character->toUpper());
}

} // namespace orvantile
