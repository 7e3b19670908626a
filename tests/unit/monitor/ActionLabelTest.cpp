#include "monitor/ShortcutMonitor.h"
#include "support/FakePlatform.h"

#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using Attributes = std::map<QString, platform::AttributeValue>;

platform::AttributeValue integer(std::int64_t value) {
    return value;
}

std::optional<QString> shortcut(const Attributes& attributes) {
    return ShortcutMonitor::shortcutString(test::makeElement(attributes));
}

Attributes item(const QString& character, std::int64_t modifiers) {
    return {{u"AXMenuItemCmdChar"_s, character}, {u"AXMenuItemCmdModifiers"_s, integer(modifiers)}};
}

Attributes glyphItem(std::int64_t glyph, std::int64_t modifiers) {
    return {{u"AXMenuItemCmdGlyph"_s, integer(glyph)}, {u"AXMenuItemCmdModifiers"_s, integer(modifiers)}};
}

/// Every code that has a text, written out once more, independently of the table in use.
const std::map<std::int64_t, QString> glyphTexts = [] {
    std::map<std::int64_t, QString> texts{
        {0x02, QString(QChar(0x21E5))}, {0x03, QString(QChar(0x21E4))},
        {0x04, QString(QChar(0x2305))}, {0x09, QString(QChar(0x2423))},
        {0x0A, QString(QChar(0x2326))}, {0x0B, QString(QChar(0x23CE))},
        {0x17, QString(QChar(0x232B))}, {0x62, QString(QChar(0x21DE))},
        {0x63, QString(QChar(0x21EA))}, {0x64, QString(QChar(0x2190))},
        {0x65, QString(QChar(0x2192))}, {0x67, QString(QChar(0x003F)) + QChar(0x20DD)},
        {0x68, QString(QChar(0x2191))}, {0x6A, QString(QChar(0x2193))},
        {0x6B, QString(QChar(0x21DF))}, {0x6E, QString(QChar(0x23FB))},
        {0x8C, QString(QChar(0x23CF))}, {0x8D, QString(QChar(0x238B))}};
    for (int key = 1; key <= 12; ++key) {
        texts[0x6E + key] = QStringLiteral("F%1").arg(key);
    }
    for (int key = 13; key <= 15; ++key) {
        texts[0x7A + key] = QStringLiteral("F%1").arg(key);
    }
    return texts;
}();

TEST(GlyphCharacter, everyCode) {
    ASSERT_EQ(glyphTexts.size(), 33U);
    for (std::int64_t code = -5; code <= 300; ++code) {
        const auto known = glyphTexts.find(code);
        const auto text = ShortcutMonitor::glyphCharacter(code);
        if (known == glyphTexts.end()) {
            EXPECT_EQ(text, std::nullopt) << code;
        } else {
            EXPECT_EQ(text, known->second) << code;
        }
    }
}

TEST(GlyphCharacter, codesFarOutsideTheTable) {
    EXPECT_EQ(ShortcutMonitor::glyphCharacter(std::numeric_limits<std::int64_t>::min()), std::nullopt);
    EXPECT_EQ(ShortcutMonitor::glyphCharacter(std::numeric_limits<std::int64_t>::max()), std::nullopt);
}

TEST(Title, isTheAttributeUnchanged) {
    EXPECT_EQ(ShortcutMonitor::title(test::makeElement({{u"AXTitle"_s, u"  Save \n"_s}})), u"  Save \n"_s);
    EXPECT_EQ(ShortcutMonitor::title(test::makeElement({{u"AXTitle"_s, QString()}})), QString());
}

TEST(Title, unreadableOrIllTypedIsAbsent) {
    EXPECT_EQ(ShortcutMonitor::title(test::makeElement({})), std::nullopt);
    EXPECT_EQ(ShortcutMonitor::title(test::makeElement({{u"AXTitle"_s, integer(3)}})), std::nullopt);
}

TEST(ShortcutString, examples) {
    EXPECT_EQ(shortcut(item(u"s"_s, 0)), u"⌘S"_s);
    EXPECT_EQ(shortcut(item(u"z"_s, 1)), u"⇧⌘Z"_s);
    EXPECT_EQ(shortcut(item(u","_s, 0)), u"⌘,"_s);
    EXPECT_EQ(shortcut(glyphItem(23, 0)), u"⌘⌫"_s);
    EXPECT_EQ(shortcut(item(u"t"_s, 8)), u"T"_s);
    EXPECT_EQ(shortcut(glyphItem(122, 12)), u"⌃F12"_s);
    EXPECT_EQ(shortcut(item(u"n"_s, 6)), u"⌃⌥⌘N"_s);
    EXPECT_EQ(shortcut(item(u"q"_s, 15)), u"⌃⌥⇧Q"_s);
}

TEST(ShortcutString, everyModifierMask) {
    for (std::int64_t mask = 0; mask < 16; ++mask) {
        QString expected;
        expected += (mask & 4) != 0 ? u"⌃"_s : QString();
        expected += (mask & 2) != 0 ? u"⌥"_s : QString();
        expected += (mask & 1) != 0 ? u"⇧"_s : QString();
        expected += (mask & 8) != 0 ? QString() : u"⌘"_s;
        EXPECT_EQ(shortcut(item(u"k"_s, mask)), expected + u"K"_s) << mask;
        EXPECT_EQ(shortcut(item(u"k"_s, mask | 0x70)), expected + u"K"_s) << "other bits are ignored";
    }
}

TEST(ShortcutString, missingOrIllTypedModifiersMeanCommand) {
    EXPECT_EQ(shortcut({{u"AXMenuItemCmdChar"_s, u"s"_s}}), u"⌘S"_s);
    EXPECT_EQ(shortcut({{u"AXMenuItemCmdChar"_s, u"s"_s}, {u"AXMenuItemCmdModifiers"_s, u"4"_s}}), u"⌘S"_s);
}

TEST(ShortcutString, withoutKeyThereIsNoShortcut) {
    auto empty = item(QString(), 4);
    empty[u"AXMenuItemCmdGlyph"_s] = integer(0);
    EXPECT_EQ(shortcut(empty), std::nullopt);
    EXPECT_EQ(shortcut({}), std::nullopt);
    EXPECT_EQ(shortcut(glyphItem(5, 0)), std::nullopt);
    EXPECT_EQ(shortcut({{u"AXMenuItemCmdChar"_s, integer(115)}}), std::nullopt);
}

TEST(ShortcutString, glyphWinsOverCharacter) {
    auto both = item(u"a"_s, 0);
    both[u"AXMenuItemCmdGlyph"_s] = integer(9);
    EXPECT_EQ(shortcut(both), u"⌘␣"_s);
}

TEST(ShortcutString, unknownOrIllTypedGlyphLeavesTheCharacter) {
    auto unknown = item(u"x"_s, 0);
    unknown[u"AXMenuItemCmdGlyph"_s] = integer(5);
    EXPECT_EQ(shortcut(unknown), u"⌘X"_s);
    unknown[u"AXMenuItemCmdGlyph"_s] = u"9"_s;
    EXPECT_EQ(shortcut(unknown), u"⌘X"_s);
}

TEST(ShortcutString, charactersAreUpperCasedAsUnicodeSays) {
    EXPECT_EQ(shortcut(item(u"ß"_s, 8)), u"SS"_s);
    EXPECT_EQ(shortcut(item(u"ö"_s, 8)), u"Ö"_s);
    EXPECT_EQ(shortcut(item(u"ж"_s, 8)), u"Ж"_s);
    EXPECT_EQ(shortcut(item(u"ŉ"_s, 8)), u"ʼN"_s);
    EXPECT_EQ(shortcut(item(u"7"_s, 8)), u"7"_s);
    EXPECT_EQ(shortcut(item(u"𐐨"_s, 8)), u"𐐀"_s);
    EXPECT_EQ(shortcut(item(u"tab"_s, 8)), u"TAB"_s);
}

} // namespace
} // namespace orvantile
