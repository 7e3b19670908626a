#include "desktop/wayland/WaylandFixture.h"
#include "support/wayland/VirtualPointer.h"

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;
using test::turnFor;
using Qt::StringLiterals::operator""_s;

class WaylandPanelTest : public WaylandFixture {
protected:
    WaylandPanelTest() { panel = panels.create({.size = {200, 60}}); }

    void show(const Rect& frame, const std::shared_ptr<PanelContent>& content) {
        panel->setContent(content);
        panel->setFrame(frame, true);
        panel->setAlpha(0);
        panel->orderFrontRegardless();
        panel->animateAlpha(1, 0.05, {});
    }

    void show() { show(place, std::make_shared<BarContent>()); }

    // The panel of 200 × 60 at (100, 500) from below on a screen of 800 lines.
    static constexpr Rect place{100, 500, 200, 60};
    static constexpr QPoint middle{200, 270};
    static constexpr QPoint margin{110, 245};

    std::shared_ptr<Panel> panel;
};

TEST_F(WaylandPanelTest, comesUpAtItsPlaceAndGoes) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, BarContent::colour));
    const auto picture = desktop.screenshot();
    EXPECT_EQ(picture.size(), QSize(1280, 800));
    EXPECT_EQ(picture.pixel(margin), Ground::colour);
    // The bar is the middle half of the panel.
    EXPECT_EQ(picture.pixel(149, 270), Ground::colour);
    EXPECT_EQ(picture.pixel(150, 270), BarContent::colour);
    EXPECT_EQ(picture.pixel(249, 270), BarContent::colour);
    EXPECT_EQ(picture.pixel(250, 270), Ground::colour);
    EXPECT_EQ(picture.pixel(200, 254), Ground::colour);
    EXPECT_EQ(picture.pixel(200, 255), BarContent::colour);
    panel->orderOut();
    EXPECT_TRUE(awaitPixel(middle, Ground::colour));
}

TEST_F(WaylandPanelTest, leavesTheFocusAndTheMouseToTheWindowBelow) {
    showGround();
    test::VirtualPointer mouse;
    show();
    ASSERT_TRUE(awaitPixel(middle, BarContent::colour));
    EXPECT_EQ(desktop.sway().focusedTitle(), u"ground"_s);
    EXPECT_TRUE(ground.isActiveWindow());
    mouse.click(middle, {1280, 800});
    EXPECT_TRUE(awaitThat([&] { return ground.clicks == 1; }));
}

} // namespace
} // namespace orvantile::platform::wayland
