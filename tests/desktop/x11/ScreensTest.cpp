#include "platform/linux/x11/X11Screens.h"

#include "support/desktop/CurrentSession.h"
#include "support/desktop/MainLoop.h"

#include <QApplication>
#include <QWidget>
#include <gmock/gmock.h>

namespace orvantile::platform::x11 {
namespace {

using test::awaitThat;
using test::CurrentSession;
using Qt::StringLiterals::operator""_s;

/// Splits the only output of the server into two monitors side by side while it lives.
class SplitMonitors {
public:
    explicit SplitMonitors(const test::PrivateSession& session_) : session(session_) {
        run({u"--setmonitor"_s, u"left"_s, u"640/160x800/200+0+0"_s, u"screen"_s});
        run({u"--setmonitor"_s, u"right"_s, u"640/160x800/200+640+0"_s, u"none"_s});
    }

    SplitMonitors(const SplitMonitors&) = delete;
    SplitMonitors& operator=(const SplitMonitors&) = delete;

    ~SplitMonitors() {
        run({u"--delmonitor"_s, u"left"_s});
        run({u"--delmonitor"_s, u"right"_s});
    }

private:
    void run(const QStringList& arguments) const {
        EXPECT_EQ(session.start(u"xrandr"_s, arguments)->awaitExit(), 0);
    }

    const test::PrivateSession& session;
};

/// A panel of a desktop that reserves a strip.
class Dock {
public:
    Dock(const test::XConnection& x_, const PixelRect& frame, const Strut& strut)
        : x(x_),
          window(xcb_generate_id(x.get())) {
        xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, x.root(), static_cast<std::int16_t>(frame.x),
                          static_cast<std::int16_t>(frame.y), static_cast<std::uint16_t>(frame.width),
                          static_cast<std::uint16_t>(frame.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto type = x.atom("_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(x.get(), XCB_PROP_MODE_REPLACE, window, x.atom("_NET_WM_WINDOW_TYPE"),
                            XCB_ATOM_ATOM, 32, 1, &type);
        xcb_change_property(x.get(), XCB_PROP_MODE_REPLACE, window, x.atom("_NET_WM_STRUT_PARTIAL"),
                            XCB_ATOM_CARDINAL, 32, sizeof(Strut) / sizeof(std::uint32_t), &strut);
        xcb_map_window(x.get(), window);
        x.synchronize();
    }

    Dock(const Dock&) = delete;
    Dock& operator=(const Dock&) = delete;

    ~Dock() {
        xcb_destroy_window(x.get(), window);
        x.synchronize();
    }

private:
    const test::XConnection& x;
    xcb_window_t window;
};

class ScreensTest : public ::testing::Test {
protected:
    ScreensTest() {
        session.start();
        connection->synchronize();
    }

    test::PrivateSession& desktop = CurrentSession::get();
    test::XConnection x{desktop.display()};
    std::unique_ptr<XConnection> connection = XConnection::open();
    X11Session session{*connection};
    X11Screens screens{*connection, session};
};

TEST_F(ScreensTest, areKnownFromTheStartWithTheScaleOfTheToolkit) {
    connection->synchronize();
    ASSERT_EQ(screens.screens().size(), 1U);
    EXPECT_EQ(screens.screens().front(), (Screen{{0, 0, 1280, 800}, {0, 0, 1280, 800}, 1}));
    EXPECT_EQ(screens.screens().front().scale, qApp->devicePixelRatio());
    EXPECT_EQ(screens.mainScreen(), screens.screens().front());
}

TEST_F(ScreensTest, leaveOutWhatAPanelReserves) {
    const Dock dock(x, {0, 760, 1280, 40}, {.bottom = 40, .bottomStart = 0, .bottomEnd = 1279});
    EXPECT_TRUE(awaitThat([&] {
        const auto main = screens.mainScreen();
        return main && main->visibleFrame == Rect{0, 40, 1280, 760};
    }));
}

TEST_F(ScreensTest, comeAndGoWithMonitors) {
    {
        const SplitMonitors two(desktop);
        ASSERT_TRUE(awaitThat([&] { return screens.screens().size() == 2; }));
        EXPECT_EQ(screens.screens()[0].frame, (Rect{0, 0, 640, 800}));
        EXPECT_EQ(screens.screens()[1].frame, (Rect{640, 0, 640, 800}));
        const Dock dock(x, {640, 0, 640, 30}, {.top = 30, .topStart = 640, .topEnd = 1279});
        EXPECT_TRUE(awaitThat([&] { return screens.screens()[1].visibleFrame == Rect{640, 0, 640, 770}; }));
        EXPECT_EQ(screens.screens()[0].visibleFrame, (Rect{0, 0, 640, 800}));
    }
    EXPECT_TRUE(awaitThat([&] { return screens.screens().size() == 1; }));
}

TEST_F(ScreensTest, haveTheOneOfTheActiveWindowForTheMainOne) {
    const SplitMonitors two(desktop);
    ASSERT_TRUE(awaitThat([&] { return screens.screens().size() == 2; }));
    QWidget window;
    window.setWindowTitle(u"wanderer"_s);
    window.setGeometry(100, 100, 300, 200);
    window.show();
    const auto isMain = [&](const Rect& frame) {
        return awaitThat([&] {
            const auto main = screens.mainScreen();
            return session.activeFrame() && main && main->frame == frame;
        });
    };
    EXPECT_TRUE(isMain({0, 0, 640, 800}));
    window.move(800, 100);
    EXPECT_TRUE(isMain({640, 0, 640, 800}));
    window.move(100, 100);
    EXPECT_TRUE(isMain({0, 0, 640, 800}));
}

} // namespace
} // namespace orvantile::platform::x11
