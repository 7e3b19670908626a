#include "platform/linux/keys/KeyBinding.h"

#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::keys {

/// So that failures can be read.
void PrintTo(const Accelerator& accelerator, std::ostream* stream) {
    *stream << (accelerator.modifiers.control ? "control " : "") << (accelerator.modifiers.alt ? "alt " : "")
            << (accelerator.modifiers.shift ? "shift " : "") << (accelerator.modifiers.super ? "super " : "")
            << accelerator.symbol;
}

namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::Eq;
using ::testing::Optional;

constexpr Modifiers control{.control = true};
constexpr Modifiers controlShift{.control = true, .shift = true};

struct Case {
    const char16_t* text;
    std::optional<Accelerator> expected;
};

class Binding : public ::testing::TestWithParam<Case> {};

TEST_P(Binding, isUnderstood) {
    EXPECT_EQ(parseKeyBinding(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    ofToolkits, Binding,
    ::testing::Values(Case{u"n;<Alt>f:n;<Primary>n", Accelerator{control, XKB_KEY_n}},
                      Case{u"p;<Alt>i:p;<Primary>Return", Accelerator{control, XKB_KEY_Return}},
                      Case{u"s;<Alt>f:s;<Shift><Control>S", Accelerator{controlShift, XKB_KEY_s}},
                      Case{u"T;<Alt>F:T;<Control>T", Accelerator{control, XKB_KEY_t}},
                      Case{u";;F5", Accelerator{{}, XKB_KEY_F5}},
                      Case{u";;<Alt><Super>KP_Add",
                           Accelerator{{.alt = true, .super = true}, XKB_KEY_KP_Add}},
                      Case{u";;<Primary>plus", Accelerator{control, XKB_KEY_plus}},
                      Case{u";;<Control>+", Accelerator{control, XKB_KEY_plus}},
                      Case{u";;<Control>;", Accelerator{control, XKB_KEY_semicolon}},
                      Case{u";;<Control><", Accelerator{control, XKB_KEY_less}},
                      Case{u";;<Control>\t", Accelerator{control, XKB_KEY_Tab}},
                      Case{u";;<Shift>ISO_Left_Tab", Accelerator{{.shift = true}, XKB_KEY_Tab}},
                      Case{u";;<Primary>Cyrillic_EF", Accelerator{control, XKB_KEY_Cyrillic_ef}},
                      Case{u";;<Primary>ß", Accelerator{control, XKB_KEY_ssharp}},
                      Case{u";;<Primary>Ü", Accelerator{control, XKB_KEY_udiaeresis}},
                      Case{u";;<Primary>page_up", Accelerator{control, XKB_KEY_Page_Up}}));

INSTANTIATE_TEST_SUITE_P(withTranslatedModifiers, Binding,
                         ::testing::Values(Case{u";;<Strg>s", Accelerator{control, XKB_KEY_s}},
                                           Case{u";;<Strg><Umschalt>s", Accelerator{controlShift, XKB_KEY_s}},
                                           Case{u";;<Ctrl><Maj>s", Accelerator{controlShift, XKB_KEY_s}},
                                           Case{u";;<Ctrl><Mayús>s", Accelerator{controlShift, XKB_KEY_s}},
                                           Case{u";;<MAIUSC><CTRL>s", Accelerator{controlShift, XKB_KEY_s}},
                                           Case{u";;<مهار>s", Accelerator{control, XKB_KEY_s}},
                                           Case{u";;Strg+Umschalt+S", Accelerator{controlShift, XKB_KEY_s}},
                                           Case{u";;Ctrl++", Accelerator{control, XKB_KEY_plus}},
                                           Case{u";;+", Accelerator{{}, XKB_KEY_plus}}));

INSTANTIATE_TEST_SUITE_P(
    thatSayNothing, Binding,
    ::testing::Values(Case{u"", std::nullopt}, Case{u"n", std::nullopt}, Case{u"n;<Alt>f:n", std::nullopt},
                      Case{u"n;<Alt>f:n;", std::nullopt}, Case{u";;<Primary>", std::nullopt},
                      Case{u";;<Primary", std::nullopt}, Case{u";;<>s", std::nullopt},
                      Case{u";;<Hyper>s", std::nullopt}, Case{u";;<Release>s", std::nullopt},
                      Case{u";;<Primary>NoSuchKey", std::nullopt}, Case{u";;NoSymbol", std::nullopt},
                      Case{u";;0xffffffff", std::nullopt}, Case{u";;VoidSymbol", std::nullopt},
                      Case{u";;<Primary>\xD800", std::nullopt}));

// Its own menus lack colons and give the mnemonic where they have no name for the key.
INSTANTIATE_TEST_SUITE_P(ofLibreOffice, Binding,
                         ::testing::Values(Case{u"p;<Alt>ip;<Control>P", std::nullopt},
                                           Case{u"b;<Alt>oxb;<Control>b", std::nullopt},
                                           Case{u"u;<Alt>eu;<Control>z", Accelerator{control, XKB_KEY_z}},
                                           Case{u"n;<Alt>f:n;<Primary>n", Accelerator{control, XKB_KEY_n}}));

TEST(KeyBinding, isNotReadWhenItIsEndless) {
    EXPECT_EQ(parseKeyBinding(QString(u";;<Primary>s"_s).append(QString(1'000'000, u's'))), std::nullopt);
    EXPECT_EQ(parseKeyBinding(u";;"_s.append(u"<Primary>"_s.repeated(100'000)).append(u's')), std::nullopt);
}

TEST(Accelerator, standsAlone) {
    EXPECT_THAT(parseAccelerator(u"<Primary>q"), Optional(Eq(Accelerator{control, XKB_KEY_q})));
    EXPECT_EQ(parseAccelerator(u""), std::nullopt);
    EXPECT_THAT(parseAccelerator(u"<"), Optional(Eq(Accelerator{{}, XKB_KEY_less})));
}

TEST(KeyBinding, knowsWhereTheMnemonicStandsForTheKeys) {
    EXPECT_TRUE(hidesAccelerator(u"x;<Alt>tx;<Control>x"));
    EXPECT_TRUE(hidesAccelerator(u"v;<Alt>vv;v"));
    EXPECT_FALSE(hidesAccelerator(u"u;<Alt>eu;<Control>z"));
    EXPECT_FALSE(hidesAccelerator(u"x;<Alt>t:x;<Control>x"));
    EXPECT_FALSE(hidesAccelerator(u"x;<Alt>tx;"));
    EXPECT_FALSE(hidesAccelerator(u""));
}

} // namespace
} // namespace orvantile::platform::keys
