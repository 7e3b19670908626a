#include "platform/linux/keys/KeyEquivalent.h"

#include "monitor/ShortcutMonitor.h"
#include "platform/linux/a11y/MenuItemNode.h"
#include "platform/linux/keys/KeyBinding.h"

#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::keys {
namespace {

using ::testing::Eq;
using ::testing::Optional;

struct Case {
    const char16_t* accelerator;
    const char16_t* label;
};

/// From what the program declares to what the user reads.
class Label : public ::testing::TestWithParam<Case> {};

TEST_P(Label, isWhatMenusShow) {
    const auto accelerator = parseAccelerator(GetParam().accelerator);
    ASSERT_TRUE(accelerator);
    const AccessibilityElement item(std::make_shared<a11y::MenuItemNode>(QString(), *accelerator));
    EXPECT_THAT(ShortcutMonitor::shortcutString(item), Optional(Eq(QString::fromUtf16(GetParam().label))));
}

INSTANTIATE_TEST_SUITE_P(
    , Label,
    ::testing::Values(Case{u"<Primary>s", u"⌃S"}, Case{u"<Primary><Shift>s", u"⌃⇧S"},
                      Case{u"<Primary><Alt><Shift>s", u"⌃⌥⇧S"}, Case{u"<Super>s", u"⌘S"},
                      Case{u"<Primary><Alt><Shift><Super>s", u"⌃⌥⇧⌘S"}, Case{u"<Primary>ß", u"⌃SS"},
                      Case{u"<Primary>comma", u"⌃,"}, Case{u"F1", u"F1"}, Case{u"<Alt>F12", u"⌥F12"},
                      Case{u"F15", u"F15"}, Case{u"F16", u"F16"}, Case{u"F35", u"F35"},
                      Case{u"<Primary>Tab", u"⌃⇥"}, Case{u"<Primary><Shift>ISO_Left_Tab", u"⌃⇧⇥"},
                      Case{u"<Primary>Return", u"⌃⏎"}, Case{u"<Primary>KP_Enter", u"⌃⌅"},
                      Case{u"<Primary>space", u"⌃␣"}, Case{u"Delete", u"⌦"},
                      Case{u"<Primary>BackSpace", u"⌃⌫"}, Case{u"Escape", u"⎋"}, Case{u"<Alt>Left", u"⌥←"},
                      Case{u"<Alt>Right", u"⌥→"}, Case{u"<Alt>Up", u"⌥↑"}, Case{u"<Alt>Down", u"⌥↓"},
                      Case{u"Page_Up", u"⇞"}, Case{u"Next", u"⇟"}, Case{u"<Alt>Home", u"⌥↖"},
                      Case{u"<Alt>End", u"⌥↘"}, Case{u"Insert", u"INSERT"}, Case{u"Menu", u"MENU"},
                      Case{u"Print", u"PRINT"}, Case{u"Pause", u"PAUSE"}, Case{u"XF86AudioPlay", u"PLAY"},
                      Case{u"XF86AudioNext", u"NEXT"}, Case{u"XF86AudioRaiseVolume", u"VOLUME UP"},
                      Case{u"XF86Eject", u"⏏"}, Case{u"XF86Calculator", u"CALCULATOR"},
                      Case{u"<Primary>KP_Add", u"⌃+"}, Case{u"<Primary>KP_0", u"⌃0"},
                      Case{u"<Primary>KP_Home", u"⌃↖"}, Case{u"<Primary>dead_circumflex", u"⌃^"},
                      Case{u"<Primary>Cyrillic_ef", u"⌃Ф"}));

TEST(KeyEquivalent, hasNoKeyForNoSymbol) {
    const auto equivalent = keyEquivalent({.modifiers = {.control = true}});
    EXPECT_EQ(equivalent.character, std::nullopt);
    EXPECT_EQ(equivalent.glyph, std::nullopt);
    EXPECT_EQ(equivalent.modifiers, 12);
}

} // namespace
} // namespace orvantile::platform::keys
