// The window of the preferences under window managers.

#include "desktop/preferences/PreferencesDesk.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class WindowTest : public ::testing::TestWithParam<WindowManager> {
protected:
    [[nodiscard]] bool awaitClosed() {
        return desk.await([&] { return desk.windows().windows().empty(); });
    }

    void send(const char* message, std::vector<std::uint32_t> data) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = handle;
        event.type = x.atom(message);
        std::ranges::copy(data, std::begin(event.data.data32));
        std::array<char, 32> bytes{};
        std::memcpy(bytes.data(), &event, sizeof event);
        xcb_send_event(x.get(), 0, x.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       bytes.data());
        x.synchronize();
    }

    [[nodiscard]] std::vector<std::uint32_t> states() { return x.numbers(handle, "_NET_WM_STATE"); }

    PreferencesDesk desk{QByteArray(), {.windowManager = GetParam()}};
    XConnection x{desk.session().display()};
    xcb_window_t handle = desk.window().handle;
};

TEST_P(WindowTest, hasItsTitleAndStandsInTheMiddle) {
    const auto window = desk.window();
    EXPECT_EQ(window.title, u"Orvantile Preferences"_s);
    EXPECT_EQ(window.frame.width(), 480);
    EXPECT_NEAR(window.frame.center().x(), 640, 8);
    EXPECT_NEAR(window.frame.center().y(), 400, 40);
}

TEST_P(WindowTest, escapeClosesIt) {
    desk.hands().press(u"Escape"_s);
    EXPECT_TRUE(awaitClosed());
    EXPECT_TRUE(desk.program().isRunning());
}

TEST_P(WindowTest, controlWClosesIt) {
    desk.hands().press(u"Ctrl+W"_s);
    EXPECT_TRUE(awaitClosed());
    EXPECT_TRUE(desk.program().isRunning());
}

TEST_P(WindowTest, theWindowManagerClosesIt) {
    desk.windows().close(desk.window().handle);
    EXPECT_TRUE(awaitClosed());
    EXPECT_TRUE(desk.program().isRunning());
}

TEST_P(WindowTest, cannotBeResizedOrMaximized) {
    const auto before = desk.window().frame.size();
    constexpr std::uint32_t widthAndHeight = 3U << 10U;
    send("_NET_MOVERESIZE_WINDOW", {widthAndHeight, 0, 0, 700, 700});
    send("_NET_WM_STATE",
         {1, x.atom("_NET_WM_STATE_MAXIMIZED_VERT"), x.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), 1});
    desk.showTab(u"Sound"_s); // handled after them
    EXPECT_TRUE(desk.await([&] { return desk.window().frame.height() == before.height() - 120; }))
        << desk.window().frame.height();
    EXPECT_EQ(desk.window().frame.width(), before.width());
    const auto allowed = x.numbers(desk.window().handle, "_NET_WM_ALLOWED_ACTIONS");
    EXPECT_THAT(allowed, ::testing::Contains(x.atom("_NET_WM_ACTION_MINIMIZE")));
    EXPECT_THAT(allowed, ::testing::Contains(x.atom("_NET_WM_ACTION_CLOSE")));
    for (const char* action :
         {"_NET_WM_ACTION_RESIZE", "_NET_WM_ACTION_MAXIMIZE_HORZ", "_NET_WM_ACTION_MAXIMIZE_VERT"}) {
        EXPECT_THAT(allowed, ::testing::Not(::testing::Contains(x.atom(action)))) << action;
    }
}

TEST_P(WindowTest, canBeMinimizedAndComesBackAsItWas) {
    const auto former = desk.window().frame;
    desk.showTab(u"Sound"_s);
    ASSERT_TRUE(desk.await([&] { return desk.window().frame.height() == former.height() - 120; }));
    const auto frame = desk.window().frame;
    const auto hidden = x.atom("_NET_WM_STATE_HIDDEN");
    constexpr std::uint32_t iconic = 3;
    send("WM_CHANGE_STATE", {iconic});
    EXPECT_TRUE(desk.await([&] { return std::ranges::count(states(), hidden) == 1; }));
    desk.windows().activate(handle);
    EXPECT_TRUE(desk.await([&] { return std::ranges::count(states(), hidden) == 0; }));
    EXPECT_EQ(desk.window().frame.size(), frame.size());
    EXPECT_TRUE(
        desk.await([&] { return desk.isShown(PreferencesDesk::checkBox, u"Play sound on activation"_s); }));
}

TEST_P(WindowTest, comesBackWhereItWasAndOnItsTabWhenTheProgramIsStartedAgain) {
    const auto former = desk.window().frame;
    desk.showTab(u"Sound"_s);
    ASSERT_TRUE(desk.await([&] { return desk.window().frame.height() == former.height() - 120; }));
    constexpr std::uint32_t xAndY = 3U << 8U;
    send("_NET_MOVERESIZE_WINDOW", {xAndY, 90, 120, 0, 0});
    ASSERT_TRUE(desk.await([&] { return desk.window().frame.left() < 200; }));
    const auto moved = desk.window().frame;
    desk.hands().press(u"Escape"_s);
    ASSERT_TRUE(awaitClosed());
    const auto again = desk.session().start(QStringLiteral(ORVANTILE_EXECUTABLE));
    const auto shown = desk.windows().awaitActive(titled(u"Orvantile Preferences"_s));
    EXPECT_EQ(shown.process, desk.program().processIdentifier());
    EXPECT_TRUE(desk.isChecked(desk.segment(u"Sound"_s)));
    EXPECT_TRUE(desk.await([&] { return desk.window().frame == moved; }))
        << desk.window().frame.x() << ' ' << desk.window().frame.y() << " instead of " << moved.x() << ' '
        << moved.y();
}

INSTANTIATE_TEST_SUITE_P(windowManagers, WindowTest,
                         ::testing::Values(WindowManager::openbox, WindowManager::xfwm4),
                         [](const auto& tested) {
                             return std::string(tested.param == WindowManager::openbox ? "openbox" : "xfwm4");
                         });

} // namespace
} // namespace orvantile::test
