// Shortcuts that are held down until the server repeats them.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <xcb/xinput.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

/// Counts how often the server repeats a held key for the window that has the focus.
class Repeats {
public:
    explicit Repeats(const QString& display) : x(display) {
        const XReply<xcb_input_xi_query_version_reply_t> version(
            xcb_input_xi_query_version_reply(x.get(), xcb_input_xi_query_version(x.get(), 2, 2), nullptr));
        const XReply<xcb_get_input_focus_reply_t> focus(
            xcb_get_input_focus_reply(x.get(), xcb_get_input_focus(x.get()), nullptr));

        struct {
            xcb_input_event_mask_t header;
            std::uint32_t mask;
        } const wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_KEY_PRESS};

        xcb_input_xi_select_events(x.get(), focus ? focus->focus : x.root(), 1, &wanted.header);
        x.synchronize();
    }

    bool await(int wanted) {
        const auto count = [this](const xcb_generic_event_t& event) {
            const auto& key = reinterpret_cast<const xcb_input_key_press_event_t&>(event);
            const bool repeated = (event.response_type & 0x7f) == XCB_GE_GENERIC &&
                                  key.event_type == XCB_INPUT_KEY_PRESS &&
                                  (key.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0;
            repeats += repeated ? 1 : 0;
        };
        return x.await([&] { return repeats >= wanted; }, count, QDeadlineTimer(patience));
    }

private:
    XConnection x;
    int repeats = 0;
};

TEST(HeldKeysTest, aShortcutIsNamedOncePerPressHoweverOftenItRepeats) {
    Stage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    Repeats repeats(stage.session().display());
    int enough = 0;
    for (int press = 0; press < 2; ++press) {
        stage.keys().hold(u"Ctrl"_s);
        stage.keys().hold(u"i"_s);
        const auto shown = stage.huds().awaitNext();
        ASSERT_TRUE(shown);
        EXPECT_EQ(shown->label, u"⌃I  Increase Indent"_s);
        constexpr int many = 10;
        EXPECT_TRUE(repeats.await(enough += many)) << "the server repeats no keys";
        stage.keys().release(u"i"_s);
        stage.keys().release(u"Ctrl"_s);
        EXPECT_TRUE(stage.huds().awaitHidden());
        EXPECT_TRUE(stage.huds().takeAll().empty()) << "named again while it was held";
    }
}

} // namespace
} // namespace orvantile::test
