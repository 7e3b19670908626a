#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"

#include <gmock/gmock.h>
#include <xkbcommon/xkbcommon-x11.h>

namespace orvantile::test {
namespace {

/// A window that has the focus and understands the keys that are pressed in it.
class Listener {
public:
    explicit Listener(const QString& display) : x(display), window(xcb_generate_id(x.get())) {
        xkb_x11_setup_xkb_extension(x.get(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
        const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_KEY_PRESS};
        xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, x.root(), 0, 0, 100, 100, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
        xcb_map_window(x.get(), window);
        xcb_set_input_focus(x.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
        x.synchronize();
    }

    /// What has been pressed: modifiers as letters, the symbol's name.
    std::vector<std::string> heard() {
        const std::unique_ptr<xkb_context, Unref> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
        const std::unique_ptr<xkb_keymap, Unref> keymap(xkb_x11_keymap_new_from_device(
            context.get(), x.get(), xkb_x11_get_core_keyboard_device_id(x.get()),
            XKB_KEYMAP_COMPILE_NO_FLAGS));
        const std::unique_ptr<xkb_state, Unref> state(xkb_state_new(keymap.get()));
        std::vector<std::string> result;
        x.drain([&](const xcb_generic_event_t& event) {
            if (event.response_type == XCB_KEY_PRESS) {
                result.push_back(describe(*state, reinterpret_cast<const xcb_key_press_event_t&>(event)));
            }
        });
        std::erase(result, std::string());
        return result;
    }

private:
    struct Unref {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }

        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }

        void operator()(xkb_state* state) const { xkb_state_unref(state); }
    };

    static std::string describe(xkb_state& state, const xcb_key_press_event_t& press) {
        xkb_state_update_mask(&state, press.state & 0xffU, 0, 0, 0, 0, (press.state >> 13U) & 3U);
        const xkb_keysym_t symbol = xkb_state_key_get_one_sym(&state, press.detail);
        const bool isModifier =
            symbol == XKB_KEY_ISO_Level3_Shift || (symbol >= XKB_KEY_Shift_L && symbol <= XKB_KEY_Hyper_R);
        if (isModifier) {
            return {};
        }
        std::array<char, 64> name{};
        xkb_keysym_get_name(symbol, name.data(), name.size());
        return std::string((press.state & XCB_MOD_MASK_CONTROL) != 0 ? "C-" : "") +
               ((press.state & XCB_MOD_MASK_1) != 0 ? "A-" : "") +
               ((press.state & XCB_MOD_MASK_SHIFT) != 0 ? "S-" : "") + name.data();
    }

    XConnection x;
    xcb_window_t window;
};

class KeyInjectorTest : public ::testing::Test {
protected:
    PrivateSession session{{.windowManager = WindowManager::none, .sessionBus = false}};
    KeyInjector keys{session.display()};
    Listener listener{session.display()};
};

TEST_F(KeyInjectorTest, pressesCombinations) {
    keys.press(QStringLiteral("Ctrl+S"));
    keys.press(QStringLiteral("Ctrl+Shift+S"));
    keys.press(QStringLiteral("F11"));
    keys.press(QStringLiteral("Alt+Left"));
    keys.press(QStringLiteral("Ctrl++"));
    keys.press(QStringLiteral("Ctrl+comma"));
    EXPECT_THAT(listener.heard(),
                ::testing::ElementsAre("C-s", "C-S-S", "F11", "A-Left", "C-S-plus", "C-comma"));
}

TEST_F(KeyInjectorTest, typesTextInTheActiveLayout) {
    keys.type(QStringLiteral("aZ1!"));
    EXPECT_THAT(listener.heard(), ::testing::ElementsAre("a", "S-Z", "1", "S-exclam"));
    session.setKeyboardLayout(QStringLiteral("fr"));
    keys.type(QStringLiteral("a1é@"));
    EXPECT_THAT(listener.heard(), ::testing::ElementsAre("a", "S-1", "eacute", "at"));
    session.setKeyboardLayout(QStringLiteral("de"));
    keys.type(QStringLiteral("zy/{"));
    EXPECT_THAT(listener.heard(), ::testing::ElementsAre("z", "y", "S-slash", "braceleft"));
}

TEST_F(KeyInjectorTest, reachesLatinLettersFromAnotherLayout) {
    session.setKeyboardLayout(QStringLiteral("us,ru"));
    keys.lockLayout(1);
    keys.type(QStringLiteral("я"));
    keys.press(QStringLiteral("Ctrl+Z"));
    EXPECT_THAT(listener.heard(), ::testing::ElementsAre("Cyrillic_ya", "C-Cyrillic_ya"));
}

TEST_F(KeyInjectorTest, refusesWhatTheKeyboardLacks) {
    EXPECT_THROW(keys.type(QStringLiteral("я")), std::runtime_error);
    EXPECT_THROW(keys.press(QStringLiteral("Ctrl+NoSuchKey")), std::runtime_error);
}

TEST_F(KeyInjectorTest, losesNothingWhenTypingFast) {
    keys.type(QStringLiteral("abcde").repeated(400));
    EXPECT_EQ(listener.heard().size(), 2000U);
}

} // namespace
} // namespace orvantile::test
