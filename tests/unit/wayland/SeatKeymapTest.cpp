#include "platform/linux/wayland/SeatKeymap.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::wayland {
namespace {

using keys::Accelerator;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t shift = 1;
constexpr std::uint32_t lock = 2;
constexpr std::uint32_t control = 4;
constexpr std::uint32_t keyZ = 52; ///< of a keyboard of the United States

std::string keymapOf(const char* layouts) {
    auto* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    const xkb_rule_names names{"evdev", "pc105", layouts, "", ""};
    auto* keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    auto* text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
    std::string result(text);
    std::free(text);
    xkb_keymap_unref(keymap);
    xkb_context_unref(context);
    return result;
}

TEST(SeatKeymap, goesByTheSymbolAloneWhileThereIsNone) {
    const SeatKeymap keymap;
    EXPECT_THAT(keymap.candidates(XKB_KEY_n, 0, control),
                ElementsAre(Accelerator{{.control = true}, XKB_KEY_n}));
    EXPECT_THAT(keymap.candidates(XKB_KEY_N, 0, control | shift),
                ElementsAre(Accelerator{{.control = true, .shift = true}, XKB_KEY_n}));
    EXPECT_THAT(keymap.candidates(XKB_KEY_plus, 0, control | shift),
                ElementsAre(Accelerator{{.control = true, .shift = true}, XKB_KEY_plus},
                            Accelerator{{.control = true}, XKB_KEY_plus}));
    EXPECT_THAT(keymap.candidates(XKB_KEY_ISO_Left_Tab, 0, control | shift),
                ElementsAre(Accelerator{{.control = true, .shift = true}, XKB_KEY_ISO_Left_Tab},
                            Accelerator{{.control = true, .shift = true}, XKB_KEY_Tab}));
    EXPECT_THAT(keymap.candidates(XKB_KEY_F5, 0, lock), ElementsAre(Accelerator{{}, XKB_KEY_F5}));
}

TEST(SeatKeymap, givesNothingForText) {
    SeatKeymap keymap;
    EXPECT_THAT(keymap.candidates(XKB_KEY_a, 38, 0), IsEmpty());
    EXPECT_THAT(keymap.candidates(XKB_KEY_A, 38, shift), IsEmpty());
    EXPECT_THAT(keymap.candidates(XKB_KEY_Control_L, 37, control), IsEmpty());
    keymap.load(keymapOf("us"));
    EXPECT_THAT(keymap.candidates(XKB_KEY_a, 38, 0), IsEmpty());
    EXPECT_THAT(keymap.candidates(XKB_KEY_A, 38, shift), IsEmpty());
}

TEST(SeatKeymap, findsTheLatinLetterUnderAnother) {
    SeatKeymap keymap;
    keymap.load(keymapOf("us,ru"));
    EXPECT_THAT(keymap.candidates(XKB_KEY_Cyrillic_ya, keyZ, control),
                ElementsAre(Accelerator{{.control = true}, XKB_KEY_Cyrillic_ya},
                            Accelerator{{.control = true}, XKB_KEY_z}));
}

TEST(SeatKeymap, doesNotTrustACodeThatGivesAnotherSymbol) {
    SeatKeymap keymap;
    keymap.load(keymapOf("us"));
    EXPECT_THAT(keymap.candidates(XKB_KEY_n, keyZ, control),
                ElementsAre(Accelerator{{.control = true}, XKB_KEY_n}));
    EXPECT_THAT(keymap.candidates(XKB_KEY_n, 100'000, control),
                ElementsAre(Accelerator{{.control = true}, XKB_KEY_n}));
}

TEST(SeatKeymap, keepsTheOneInForceWhenTheNextIsNone) {
    SeatKeymap keymap;
    keymap.load(keymapOf("us,ru"));
    keymap.load("xkb_keymap { nonsense");
    keymap.load("");
    EXPECT_EQ(keymap.candidates(XKB_KEY_Cyrillic_ya, keyZ, control).size(), 2U);
}

} // namespace
} // namespace orvantile::platform::wayland
