#include "desktop/x11/PanelStage.h"

#include "support/desktop/KeyInjector.h"
#include "support/desktop/MainLoop.h"

#include <unistd.h>

namespace orvantile::platform::x11 {
namespace {

using test::awaitThat;
using test::turnFor;
using Qt::StringLiterals::operator""_s;

/// Coming, going, and being in nobody's way.
class X11PanelTest : public PanelStage {};

TEST_F(X11PanelTest, comesUpAtItsPlaceWithItsLabelAndGoes) {
    show();
    const auto shown = huds.awaitNext();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->label, u"⌃S  Save"_s);
    EXPECT_EQ(shown->frame, place);
    panel->orderOut();
    EXPECT_TRUE(huds.awaitHidden());
}

TEST_F(X11PanelTest, showsALabelInPlaceOfAnother) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    show(std::make_shared<BarContent>(u"⌃Z  Undo"_s, Size{240, 60}));
    const auto second = huds.awaitNext();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->label, u"⌃Z  Undo"_s);
    EXPECT_TRUE(awaitPixel({220, 270}, red));
}

TEST_F(X11PanelTest, neverTakesTheFocus) {
    showGround();
    const auto before = windows.activeWindow().handle;
    for (int round = 0; round < 5; ++round) {
        show();
        ASSERT_TRUE(huds.awaitNext());
        turnFor(30);
        EXPECT_EQ(windows.activeWindow().handle, before);
        panel->orderOut();
        ASSERT_TRUE(huds.awaitHidden());
        EXPECT_EQ(windows.activeWindow().handle, before);
    }
    EXPECT_TRUE(ground.isActiveWindow());
}

TEST_F(X11PanelTest, letsClicksThrough) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    test::KeyInjector hands(desktop.display());
    hands.click(middle);
    EXPECT_TRUE(awaitThat([&] { return ground.clicks == 1; }));
}

TEST_F(X11PanelTest, staysAboveWindowsThatAreRaisedOverIt) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    showGround();
    EXPECT_TRUE(awaitPixel(middle, red));
    QWidget other(nullptr, Qt::X11BypassWindowManagerHint);
    other.setStyleSheet(u"background: blue"_s);
    other.setGeometry(0, 0, 600, 600);
    other.show();
    ASSERT_TRUE(awaitPixel({20, 20}, qRgb(0, 0, 255)));
    EXPECT_TRUE(awaitPixel(middle, red));
    other.raise();
    turnFor(50);
    EXPECT_TRUE(awaitPixel(middle, red));
}

TEST_F(X11PanelTest, isNoWindowOfTheTaskListAndNoMenu) {
    int menus = 0;
    // Menus of others, such as the window manager's, are none of the panel's.
    session.onMenuOpened = [&](std::int32_t process) {
        menus += process <= 0 || process == ::getpid() ? 1 : 0;
    };
    show();
    ASSERT_TRUE(huds.awaitNext());
    turnFor(50);
    for (const auto& window : windows.windows()) {
        EXPECT_NE(window.className, u"orvantile"_s);
    }
    EXPECT_EQ(menus, 0);
    EXPECT_EQ(session.openMenus(::getpid()), 0);
}

TEST_F(X11PanelTest, overhangsTheScreenWithoutHarm) {
    show(std::make_shared<BarContent>(u"very long"_s, Size{20000, 60}));
    ASSERT_TRUE(huds.awaitNext());
    panel->orderOut();
    ASSERT_TRUE(huds.awaitHidden());
    panel->setFrame({-5000, -5000, 100, 50}, true);
    panel->orderFrontRegardless();
    turnFor(50);
    EXPECT_FALSE(huds.isVisible());
    show();
    EXPECT_TRUE(huds.awaitNext());
}

} // namespace
} // namespace orvantile::platform::x11
