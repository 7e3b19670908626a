#include "desktop/wayland/WaylandFixture.h"

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;

class WaylandOutputsTest : public WaylandFixture {
protected:
    WaylandOutputsTest() { panel = panels.create({.size = {200, 60}}); }

    /// At the lower left corner of the main screen, as the controller places panels.
    void showInCorner() {
        const auto area = screens.mainScreen()->visibleFrame;
        content = std::make_shared<BarContent>();
        panel->setContent(content);
        panel->setFrame({area.minX() + 24, area.minY() + 24, 200, 60}, true);
        panel->setAlpha(1);
        panel->orderFrontRegardless();
    }

    /// The middle of that panel on an output of so many pixels.
    static QPoint middle(QSize pixels, double scale) {
        return {static_cast<int>(124 * scale), static_cast<int>(pixels.height() - 54 * scale)};
    }

    /// Adds an output and returns its name.
    QString addOutput(const QString& resolution, const QString& scale) {
        const auto name = plugOutput();
        desktop.sway().run(u"output "_s % name % u" resolution "_s % resolution % u" scale "_s % scale %
                           u" position 1280 0 bg #803020 solid_color"_s);
        EXPECT_TRUE(awaitOutputs(2));
        EXPECT_TRUE(
            awaitThat([&] { return std::abs(screens.screens().back().scale - scale.toDouble()) < 0.01; }));
        return name;
    }

    std::shared_ptr<Panel> panel;
    std::shared_ptr<BarContent> content;
};

TEST_F(WaylandOutputsTest, areKnownInPoints) {
    EXPECT_EQ(screens.screens(), (std::vector<Screen>{{{0, 0, 1280, 800}, {0, 0, 1280, 800}, 1}}));
    addOutput(u"1920x1080"_s, u"2"_s);
    const auto second = screens.screens().back();
    EXPECT_EQ(second.frame, (Rect{1280, 260, 960, 540}));
    EXPECT_EQ(second.scale, 2);
    desktop.sway().run(u"output HEADLESS-1 transform 90"_s);
    EXPECT_TRUE(awaitThat([&] { return screens.screens().front().frame == Rect{0, 0, 800, 1280}; }));
}

TEST_F(WaylandOutputsTest, panelIsOnTheOneWithTheFocus) {
    const auto second = addOutput(u"1000x700"_s, u"1"_s);
    desktop.sway().run(u"focus output HEADLESS-1"_s);
    showGround();
    ASSERT_TRUE(awaitThat([&] { return focused.name() == outputs.names().front(); }));
    showInCorner();
    EXPECT_TRUE(awaitPixel(middle({1280, 800}, 1), BarContent::colour, u"HEADLESS-1"_s));
    panel->orderOut();

    desktop.sway().run(u"move container to output "_s % second % u", focus output "_s % second);
    ASSERT_TRUE(awaitThat([&] { return focused.name() == outputs.names().back(); }));
    EXPECT_EQ(screens.mainScreen()->frame.width, 1000);
    showInCorner();
    EXPECT_TRUE(awaitPixel(middle({1000, 700}, 1), BarContent::colour, second));
    EXPECT_NE(pixelAt(middle({1280, 800}, 1), u"HEADLESS-1"_s), BarContent::colour);
}

TEST_F(WaylandOutputsTest, panelIsOnTheOneInUseWhereNoWindowIs) {
    const auto second = addOutput(u"1000x700"_s, u"2"_s);
    desktop.sway().run(u"focus output "_s % second);
    EXPECT_EQ(focused.name(), 0U);
    showInCorner();
    EXPECT_TRUE(awaitPixel(middle({1000, 700}, 2), BarContent::colour, second));
    EXPECT_EQ(content->preparedScale, 2) << "drawn anew for the output it came up on";
}

TEST_F(WaylandOutputsTest, panelIsSharpOnEveryScale) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        desktop.sway().run(u"output HEADLESS-1 scale "_s % QString::number(scale));
        ASSERT_TRUE(awaitThat([&] { return std::abs(screens.screens().front().scale - scale) < 0.01; }));
        showInCorner();
        EXPECT_TRUE(awaitPixel(middle({1280, 800}, scale), BarContent::colour));
        EXPECT_EQ(content->preparedScale, scale) << "the compositor has nothing to resize";
        panel->orderOut();
    }
}

TEST_F(WaylandOutputsTest, panelFollowsAScaleThatChangesUnderIt) {
    showInCorner();
    ASSERT_TRUE(awaitPixel(middle({1280, 800}, 1), BarContent::colour));
    desktop.sway().run(u"output HEADLESS-1 scale 2"_s);
    EXPECT_TRUE(awaitThat([&] { return content->preparedScale == 2; }));
    EXPECT_TRUE(awaitPixel(middle({1280, 800}, 2), BarContent::colour));
}

} // namespace
} // namespace orvantile::platform::wayland
