#include "desktop/x11/PanelStage.h"

#include "support/desktop/MainLoop.h"

namespace orvantile::platform::x11 {
namespace {

using test::awaitThat;
using test::turnFor;
using Qt::StringLiterals::operator""_s;

/// What shows through the panel, with a compositor and without.
class X11PanelGroundTest : public PanelStage {};

TEST_F(X11PanelGroundTest, liesOnWhatIsBeneathWithoutACompositor) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(pixelAt(margin), green);
    EXPECT_EQ(pixelAt({99, 270}), green);
    panel->orderOut();
    EXPECT_TRUE(awaitPixel(middle, green));
}

TEST_F(X11PanelGroundTest, doesNotTakeItselfForWhatIsBeneath) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    // Wider, so that the old bar lies in the new margin.
    show(std::make_shared<BarContent>(u"wider"_s, Size{800, 60}));
    ASSERT_TRUE(awaitPixel({500, 270}, red));
    EXPECT_EQ(pixelAt({160, 270}), green);
    const auto picture = std::get<QImage>(backdrop.behind({100, 500, 800, 60}));
    EXPECT_EQ(picture.pixel(400, 30), green);
}

TEST_F(X11PanelGroundTest, isBlendedByACompositor) {
    desktop.startCompositor();
    ASSERT_TRUE(awaitThat([&] { return compositor.isRunning(); }));
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(pixelAt(margin), green);
}

TEST_F(X11PanelGroundTest, staysWithoutABlackBoxWhenACompositorStartsAndStops) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, red));
    desktop.startCompositor();
    ASSERT_TRUE(awaitThat([&] { return compositor.isRunning(); }));
    EXPECT_TRUE(awaitThat([&] { return pixelAt(middle) == red && pixelAt(margin) == green; }));
    desktop.stopCompositor();
    ASSERT_TRUE(awaitThat([&] { return !compositor.isRunning(); }));
    EXPECT_TRUE(awaitThat([&] { return pixelAt(middle) == red && pixelAt(margin) == green; }));
    turnFor(200);
    EXPECT_EQ(pixelAt(middle), red);
    EXPECT_EQ(pixelAt(margin), green);
}

TEST_F(X11PanelGroundTest, drawsItsContentAnewWhereTheBlurIsAnothersFromNowOn) {
    const auto& atoms = connection->atoms();
    const auto offerBlur = [&](bool offered) {
        constexpr std::uint32_t any = 1;
        if (offered) {
            xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, connection->root(),
                                atoms.blurBehind, XCB_ATOM_CARDINAL, 32, 1, &any);
        } else {
            xcb_delete_property(connection->get(), connection->root(), atoms.blurBehind);
        }
        connection->synchronize();
    };
    const auto content = std::make_shared<BarContent>();
    showGround();
    show(content);
    ASSERT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(content->preparations, 1);
    offerBlur(true);
    ASSERT_FALSE(compositor.blurs());
    desktop.startCompositor();
    EXPECT_TRUE(awaitThat([&] { return compositor.blurs() && content->preparations == 2; }));
    EXPECT_TRUE(std::holds_alternative<CompositorBlurs>(backdrop.behind({100, 500, 200, 60})));
    desktop.stopCompositor();
    EXPECT_TRUE(awaitThat([&] { return !compositor.isRunning() && content->preparations == 3; }));
    EXPECT_TRUE(awaitThat([&] { return pixelAt(middle) == red && pixelAt(margin) == green; }));
    offerBlur(false);
}

TEST_F(X11PanelGroundTest, showsNoBlackBoxWhereTheCompositorRestsUnderAFullScreenWindow) {
    desktop.startCompositor();
    ASSERT_TRUE(awaitThat([&] { return compositor.isRunning(); }));
    showGround();
    turnFor(300); // the compositor sees that there is nothing to blend
    for (int round = 0; round < 5; ++round) {
        show();
        ASSERT_TRUE(huds.awaitNext());
        for (int look = 0; look < 20; ++look) {
            EXPECT_EQ(pixelAt(margin), green) << "look " << look << " of round " << round;
            turnFor(5);
        }
        panel->orderOut();
        ASSERT_TRUE(huds.awaitHidden());
        turnFor(150);
    }
}

} // namespace
} // namespace orvantile::platform::x11
