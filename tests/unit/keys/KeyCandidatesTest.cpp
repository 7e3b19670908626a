#include "unit/keys/Keymap.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Keys by their place: AC01… is the row of A, AB01… that of Z, AD01… that of Q, AE01… that of the digits.

TEST(KeyCandidates, areTheModifiersAndTheLowerCaseSymbol) {
    Keymap keys("us");
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("AC02"), ElementsAre("Ctrl+s"));
    keys.hold("LALT");
    EXPECT_THAT(keys.described("AC02"), ElementsAre("Ctrl+Alt+s"));
    keys.hold("LWIN");
    EXPECT_THAT(keys.described("AC02"), ElementsAre("Ctrl+Alt+Super+s"));
}

TEST(KeyCandidates, keepShiftForLetters) {
    Keymap keys("us");
    keys.hold("LCTL");
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("AC02"), ElementsAre("Ctrl+Shift+s"));
}

TEST(KeyCandidates, goWithoutShiftWhereItMakesTheSymbol) {
    Keymap keys("us");
    keys.hold("LCTL");
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("AE12"), ElementsAre("Ctrl+Shift+plus", "Ctrl+Shift+equal", "Ctrl+plus"));
}

TEST(KeyCandidates, ignoreCapsLockAndNumLock) {
    Keymap keys("us");
    keys.tap("CAPS");
    keys.tap("NMLK");
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("AC02"), ElementsAre("Ctrl+s"));
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("AC02"), ElementsAre("Ctrl+Shift+s"));
}

TEST(KeyCandidates, tellKeypadKeysByTheNumLock) {
    Keymap keys("us");
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("KP1"), ElementsAre("Ctrl+KP_End"));
    keys.tap("NMLK");
    EXPECT_THAT(keys.described("KP1"), ElementsAre("Ctrl+KP_1", "Ctrl+KP_End"));
    EXPECT_THAT(keys.described("KPAD"), ElementsAre("Ctrl+KP_Add"));
}

TEST(KeyCandidates, areNoneForTypedText) {
    Keymap keys("us");
    for (const char* key : {"AC02", "AE01", "SPCE", "AB08"}) {
        EXPECT_THAT(keys.described(key), IsEmpty()) << key;
        keys.hold("LFSH");
        EXPECT_THAT(keys.described(key), IsEmpty()) << key << " with Shift";
        keys.release("LFSH");
    }
    keys.tap("NMLK");
    EXPECT_THAT(keys.described("KP1"), IsEmpty());
    EXPECT_THAT(keys.described("KPAD"), IsEmpty());
}

TEST(KeyCandidates, areNoneForKeysThatComposeText) {
    Keymap keys("us", "intl", "compose:ralt");
    EXPECT_THAT(keys.described("AC11"), IsEmpty()); // dead acute
    EXPECT_THAT(keys.described("RALT"), IsEmpty()); // compose
}

TEST(KeyCandidates, areNoneForModifiersAndLocks) {
    Keymap keys("de");
    for (const char* key : {"LCTL", "LFSH", "LALT", "LWIN", "RALT", "CAPS", "NMLK"}) {
        EXPECT_THAT(keys.described(key), IsEmpty()) << key;
    }
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("LFSH"), IsEmpty());
}

TEST(KeyCandidates, includeFunctionAndNavigationKeysByThemselves) {
    const Keymap keys("us");
    EXPECT_THAT(keys.described("FK05"), ElementsAre("F5"));
    EXPECT_THAT(keys.described("DELE"), ElementsAre("Delete"));
    EXPECT_THAT(keys.described("HOME"), ElementsAre("Home"));
    EXPECT_THAT(keys.described("UP"), ElementsAre("Up"));
    EXPECT_THAT(keys.described("RTRN"), ElementsAre("Return"));
    EXPECT_THAT(keys.described("ESC"), ElementsAre("Escape"));
    EXPECT_THAT(keys.described("KPEN"), ElementsAre("KP_Enter"));
}

TEST(KeyCandidates, includeFunctionKeysWithAllModifiers) {
    Keymap keys("us");
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("FK03"), ElementsAre("Shift+F3"));
    keys.hold("LCTL");
    keys.hold("LALT");
    EXPECT_FALSE(keys.described("DELE").empty());
    EXPECT_EQ(keys.described("DELE").front(), "Ctrl+Alt+Shift+Delete");
}

TEST(KeyCandidates, takeTheBackwardTabForTab) {
    Keymap keys("us");
    keys.hold("LCTL");
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("TAB"),
                ElementsAre("Ctrl+Shift+ISO_Left_Tab", "Ctrl+Shift+Tab", "Ctrl+ISO_Left_Tab"));
}

TEST(KeyCandidates, followTheGermanLayout) {
    Keymap keys("de");
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("AD06"), ElementsAre("Ctrl+z"));
    EXPECT_THAT(keys.described("AB01"), ElementsAre("Ctrl+y"));
    EXPECT_THAT(keys.described("AC10"), ElementsAre("Ctrl+odiaeresis"));
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("AE07"), ElementsAre("Ctrl+Shift+slash", "Ctrl+Shift+7", "Ctrl+slash"));
}

TEST(KeyCandidates, doNotTakeAltGrTextForAltShortcuts) {
    Keymap keys("de");
    keys.hold("RALT");
    EXPECT_THAT(keys.described("AD01"), IsEmpty()); // @
    EXPECT_THAT(keys.described("AD03"), IsEmpty()); // €
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("AD01"), ElementsAre("Ctrl+at", "Ctrl+q"));
}

TEST(KeyCandidates, doNotTakeTextForAltShortcutsWhereAltIsTheThirdLevel) {
    Keymap keys("de", "", "lv3:lalt_switch");
    keys.hold("LALT");
    EXPECT_THAT(keys.described("AD01"), IsEmpty());
}

TEST(KeyCandidates, followTheFrenchLayoutWithItsShiftedDigits) {
    Keymap keys("fr");
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("AD01"), ElementsAre("Ctrl+a"));
    EXPECT_THAT(keys.described("AE01"), ElementsAre("Ctrl+ampersand"));
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("AE01"), ElementsAre("Ctrl+Shift+1", "Ctrl+Shift+ampersand", "Ctrl+1"));
}

TEST(KeyCandidates, findLatinLettersWhileAnotherScriptIsInForce) {
    Keymap keys("us,ru");
    keys.lockLayout(1);
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("AB01"), ElementsAre("Ctrl+Cyrillic_ya", "Ctrl+z"));
    keys.hold("LFSH");
    EXPECT_THAT(keys.described("AC02"), ElementsAre("Ctrl+Shift+Cyrillic_yeru", "Ctrl+Shift+s"));
    EXPECT_THAT(Keymap("us,ru").described("AB01"), IsEmpty());
}

TEST(KeyCandidates, keepZAndYApartWhereTwoLatinLayoutsSwapThem) {
    Keymap keys("us,de");
    keys.lockLayout(1);
    keys.hold("LCTL");
    EXPECT_THAT(keys.described("AB01"), ElementsAre("Ctrl+y"));
    EXPECT_THAT(keys.described("AD06"), ElementsAre("Ctrl+z"));
}

} // namespace
} // namespace orvantile::test
