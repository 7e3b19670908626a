#include "support/desktop/HudWatcher.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/Screenshot.h"

#include <gmock/gmock.h>
#include <string_view>

namespace orvantile::test {
namespace {

using namespace std::string_view_literals;

/// A window that looks like the program's panel from outside.
class FakePanel {
public:
    FakePanel(const QString& display, std::string_view windowClass)
        : x(display),
          window(xcb_generate_id(x.get())) {
        const std::array<std::uint32_t, 2> values{0xff8040, 1};
        xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, x.root(), 40, 30, 200, 60, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
        set("WM_CLASS", windowClass);
    }

    void title(std::string_view text) { set("_NET_WM_NAME", text); }

    void map() {
        xcb_map_window(x.get(), window);
        x.synchronize();
    }

    void unmap() {
        xcb_unmap_window(x.get(), window);
        x.synchronize();
    }

private:
    void set(const char* property, std::string_view value) {
        xcb_change_property(x.get(), XCB_PROP_MODE_REPLACE, window, x.atom(property), XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(value.size()), value.data());
        x.synchronize();
    }

    XConnection x;
    xcb_window_t window;
};

class HudWatcherTest : public ::testing::Test {
protected:
    PrivateSession session{{.windowManager = WindowManager::none, .sessionBus = false}};
    HudWatcher huds{session.display()};
};

TEST_F(HudWatcherTest, seesEachShowWithItsLabelAndPlace) {
    FakePanel panel(session.display(), "orvantile\0orvantile\0"sv);
    panel.title("⌃S  Save");
    panel.map();
    const auto first = huds.awaitNext();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->label, QStringLiteral("⌃S  Save"));
    EXPECT_EQ(first->frame, QRect(40, 30, 200, 60));
    panel.title("⌃Z  Undo");
    EXPECT_EQ(huds.awaitNext().value_or(ShownHud()).label, QStringLiteral("⌃Z  Undo"));
    EXPECT_TRUE(huds.isVisible());
    panel.unmap();
    EXPECT_TRUE(huds.awaitHidden());
    panel.title("not shown");
    EXPECT_TRUE(huds.takeAll().empty());
    panel.map();
    EXPECT_EQ(huds.awaitNext().value_or(ShownHud()).label, QStringLiteral("not shown"));
}

TEST_F(HudWatcherTest, looksAtTheProgramsPanelOnly) {
    FakePanel other(session.display(), "tooltip\0Tooltip\0"sv);
    other.title("something else");
    other.map();
    EXPECT_TRUE(huds.takeAll().empty());
    EXPECT_FALSE(huds.isVisible());
}

TEST_F(HudWatcherTest, screenshotShowsWhatIsOnTheScreen) {
    FakePanel panel(session.display(), "orvantile\0orvantile\0"sv);
    panel.map();
    const QImage screen = takeScreenshot(session.display());
    EXPECT_EQ(screen.size(), QSize(1280, 800));
    EXPECT_EQ(screen.pixel(100, 50), qRgb(0xff, 0x80, 0x40));
    EXPECT_EQ(takeScreenshot(session.display(), QRect(40, 30, 200, 60)).size(), QSize(200, 60));
}

} // namespace
} // namespace orvantile::test
