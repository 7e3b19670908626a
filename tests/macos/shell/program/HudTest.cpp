#include "hud/HUDController.h"
#include "macos/shell/program/ProgramTest.h"
#include "settings/Settings.h"

namespace orvantile::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;
using Qt::StringLiterals::operator""_s;

/// What the HUD asks of the system, from the first call to the last.
class MacHudTest : public ProgramTest {
protected:
    MacHudTest() { forgetCalls(); }

    [[nodiscard]] static std::vector<std::string> panelCalls() {
        return callsTo({"NSPanel", "NSAnimationContext", "NSSound", "NSColor"});
    }

    [[nodiscard]] static std::string frameCall() {
        const auto panel = desktop::panel().value();
        char text[96];
        std::snprintf(text, sizeof text, "[NSPanel setFrame:{%g, %g, %g, %g} display:YES]", panel.x, panel.y,
                      panel.width, panel.height);
        return text;
    }

    platform::Platform& platform = platform::Platform::current();
    Settings settings{*platform.defaults};
    std::shared_ptr<HUDController> hud = std::make_shared<HUDController>(platform, settings);
};

TEST_F(MacHudTest, showsItsFirstLabelStepByStep) {
    hud->show(u"⌘S  Save"_s);

    EXPECT_THAT(panelCalls(),
                ElementsAre("[NSPanel initWithContentRect:{0, 0, 200, 60} styleMask:128 backing:2 defer:NO]",
                            "[NSPanel setFloatingPanel:YES]", "[NSPanel setLevel:25]",
                            "[NSPanel setCollectionBehavior:337]", "[NSColor clearColor]",
                            "[NSPanel setBackgroundColor:<NSColor clear>]", "[NSPanel setOpaque:NO]",
                            "[NSPanel setHasShadow:NO]", "[NSPanel setIgnoresMouseEvents:YES]",
                            "[NSPanel setHidesOnDeactivate:NO]", "[NSPanel setReleasedWhenClosed:NO]",
                            "[NSPanel setContentView:<OrvantileHostView>]", frameCall(),
                            "[NSPanel setAlphaValue:0]", "[NSPanel orderFrontRegardless]",
                            "[NSAnimationContext runAnimationGroup:block]",
                            "[NSAnimationContext setDuration:0.12]", "[NSPanel animator]",
                            "[NSPanel setAlphaValue:1]", "[NSSound soundNamed:\"Pop\"]", "[NSSound play]"));
    EXPECT_EQ(calls().back(), "[NSTimer scheduledTimerWithTimeInterval:1.2 repeats:NO block:block]");
}

TEST_F(MacHudTest, showsTheNextLabelInTheSamePanelAndStartsTheTimeAnew) {
    hud->show(u"First"_s);
    desktop::advance(1);
    forgetCalls();
    hud->show(u"Second"_s);

    EXPECT_THAT(panelCalls(),
                ElementsAre("[NSPanel setContentView:<OrvantileHostView>]", frameCall(),
                            "[NSPanel setAlphaValue:0]", "[NSPanel orderFrontRegardless]",
                            "[NSAnimationContext runAnimationGroup:block]",
                            "[NSAnimationContext setDuration:0.12]", "[NSPanel animator]",
                            "[NSPanel setAlphaValue:1]", "[NSSound soundNamed:\"Pop\"]", "[NSSound play]"));
    const std::vector<std::string> last(calls().end() - 3, calls().end());
    EXPECT_THAT(last, ElementsAre("[NSSound play]", "[NSTimer invalidate]",
                                  "[NSTimer scheduledTimerWithTimeInterval:1.2 repeats:NO block:block]"));
    EXPECT_EQ(desktop::panel()->label, "Second");
}

TEST_F(MacHudTest, staysUpItsFullTimeFromTheLastLabelOn) {
    hud->show(u"First"_s);
    desktop::advance(1);
    hud->show(u"Second"_s);
    desktop::advance(1.19);
    EXPECT_EQ(desktop::panel()->alpha, 1);

    desktop::advance(0.02);
    EXPECT_EQ(desktop::panel()->alpha, 0);
}

TEST_F(MacHudTest, fadesAwayAfterItsTimeAndGoesOffTheScreenAtTheEndOfTheFading) {
    hud->show(u"Save"_s);
    desktop::advance(1.19);
    forgetCalls();
    desktop::advance(0.02);
    EXPECT_THAT(panelCalls(),
                ElementsAre("[NSAnimationContext runAnimationGroup:block completionHandler:block]",
                            "[NSAnimationContext setDuration:0.22]", "[NSPanel animator]",
                            "[NSPanel setAlphaValue:0]"));
    EXPECT_TRUE(desktop::panel()->visible);

    desktop::finishAnimations();
    EXPECT_EQ(calls().back(), "[NSPanel orderOut:nil]");
    EXPECT_FALSE(desktop::panel()->visible);
}

TEST_F(MacHudTest, goesOffTheScreenThoughANewLabelCameWhileItFaded) {
    hud->show(u"First"_s);
    desktop::advance(1.3);
    hud->show(u"Second"_s);
    EXPECT_TRUE(desktop::panel()->visible);

    desktop::finishAnimations();
    EXPECT_FALSE(desktop::panel()->visible);
}

TEST_F(MacHudTest, looksUpNoSoundWhenSoundsAreOff) {
    settings.soundEnabled = false;
    hud->show(u"Save"_s);

    EXPECT_THAT(callsTo({"NSSound"}), SizeIs(0));
}

TEST_F(MacHudTest, blursWithTheMaterialOfTheToneThatStandsOut) {
    const auto appearance = [&](const HUDAppearance& setting) {
        settings.appearance = setting;
        forgetCalls();
        hud->show(u"Save"_s);
        const auto effects = callsTo({"NSVisualEffectView"});
        EXPECT_THAT(effects, SizeIs(::testing::Ge(7U)));
        return effects.size() > 5 ? effects[5] : std::string();
    };
    const std::string dark = "[NSVisualEffectView setAppearance:<NSAppearance NSAppearanceNameDarkAqua>]";
    const std::string light = "[NSVisualEffectView setAppearance:<NSAppearance NSAppearanceNameAqua>]";
    EXPECT_EQ(appearance(HUDAppearance::light), dark);
    EXPECT_EQ(appearance(HUDAppearance::dark), light);

    desktop::setDark(false);
    EXPECT_EQ(appearance(HUDAppearance::auto_), dark);
    desktop::setDark(true);
    EXPECT_EQ(appearance(HUDAppearance::auto_), light);
}

TEST_F(MacHudTest, blursExactlyTheCapsule) {
    hud->show(u"⌘S  Save"_s);
    desktop::advance(1.1);
    const auto panel = desktop::panel().value();

    // The margins of the view: 28 at the sides, 36 below, 22 above.
    ASSERT_THAT(panel.views, SizeIs(2));
    const auto& blur = panel.views.front();
    EXPECT_EQ(blur.kind, "NSVisualEffectView");
    EXPECT_NEAR(blur.x, 28, 0.01);
    EXPECT_NEAR(blur.y, 36, 0.01);
    EXPECT_NEAR(blur.width, panel.width - 56, 0.01);
    EXPECT_NEAR(blur.height, panel.height - 58, 0.01);
}

TEST_F(MacHudTest, isFlatWithoutTheMaterialWhenItIsNotTranslucent) {
    settings.translucent = false;
    hud->show(u"Save"_s);

    EXPECT_THAT(callsTo({"NSVisualEffectView"}), SizeIs(0));
}

TEST_F(MacHudTest, takesTheFirstScreenWhileThereIsNoMainOne) {
    desktop::setScreens({{100, 200, 1000, 800, 100, 200, 1000, 800, 1}}, false);
    settings.position = HUDPosition::bottomLeft;
    hud->show(u"Save"_s);

    EXPECT_EQ(desktop::panel()->x, 124);
    EXPECT_EQ(desktop::panel()->y, 224);
}

} // namespace
} // namespace orvantile::test
