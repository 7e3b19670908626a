#include "macos/shell/tests/PanelTest.h"

namespace orvantile::test {
namespace {

using platform::Rect;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

TEST_F(MacPanelTest, isCreatedWithItsAttributesInOrder) {
    const auto panel = makePanel();

    EXPECT_THAT(calls(),
                ElementsAre("[NSPanel initWithContentRect:{0, 0, 200, 60} styleMask:128 backing:2 defer:NO]",
                            "[NSPanel setFloatingPanel:YES]", "[NSPanel setLevel:25]",
                            "[NSPanel setCollectionBehavior:337]", "[NSColor clearColor]",
                            "[NSPanel setBackgroundColor:<NSColor clear>]", "[NSPanel setOpaque:NO]",
                            "[NSPanel setHasShadow:NO]", "[NSPanel setIgnoresMouseEvents:YES]",
                            "[NSPanel setHidesOnDeactivate:NO]", "[NSPanel setReleasedWhenClosed:NO]"));
}

TEST_F(MacPanelTest, takesOtherAttributesAsTheyAre) {
    const auto panel = panels.create({.size = {10, 20},
                                      .floatsAboveEverything = false,
                                      .joinsAllWorkspaces = false,
                                      .ignoresMouseEvents = false,
                                      .activates = true,
                                      .hasShadow = true});

    EXPECT_THAT(calls(),
                ElementsAre("[NSPanel initWithContentRect:{0, 0, 10, 20} styleMask:0 backing:2 defer:NO]",
                            "[NSPanel setFloatingPanel:NO]", "[NSPanel setLevel:0]",
                            "[NSPanel setCollectionBehavior:80]", "[NSColor clearColor]",
                            "[NSPanel setBackgroundColor:<NSColor clear>]", "[NSPanel setOpaque:NO]",
                            "[NSPanel setHasShadow:YES]", "[NSPanel setIgnoresMouseEvents:NO]",
                            "[NSPanel setHidesOnDeactivate:NO]", "[NSPanel setReleasedWhenClosed:NO]"));
}

TEST_F(MacPanelTest, putsEachContentInAViewOfItsOwnAsTheContentView) {
    const auto panel = makePanel();
    forgetCalls();
    panel->setContent(content);
    EXPECT_THAT(calls(), ElementsAre("[OrvantileHostView setWantsLayer:YES]",
                                     "[OrvantilePictureView initWithFrame:{0, 0, 0, 0}]",
                                     "[OrvantileHostView addSubview:<OrvantilePictureView>]",
                                     "[OrvantileHostView setAccessibilityElement:YES]",
                                     "[OrvantileHostView setAccessibilityRole:\"AXStaticText\"]",
                                     "[OrvantileHostView setAccessibilityLabel:\"⌃S  Save\"]",
                                     "[OrvantileHostView setTranslatesAutoresizingMaskIntoConstraints:NO]",
                                     "[NSPanel setContentView:<OrvantileHostView>]"));

    const auto before = desktop::liveObjects();
    {
        const desktop::Pool turn;
        panel->setContent(std::make_shared<FakeContent>());
    }
    EXPECT_EQ(desktop::liveObjects(), before);
}

TEST_F(MacPanelTest, takesTheSizeThatTheContentWants) {
    const auto panel = makePanel();
    panel->setContent(content);

    const auto shown = desktop::panel().value();
    EXPECT_FALSE(shown.constraintsFromMask);
    EXPECT_EQ(shown.intrinsicWidth, 200);
    EXPECT_EQ(shown.intrinsicHeight, 100);
}

TEST_F(MacPanelTest, isReadByAssistiveTechnology) {
    const auto panel = makePanel();
    panel->setContent(content);

    const auto shown = desktop::panel().value();
    EXPECT_TRUE(shown.accessible);
    EXPECT_EQ(shown.role, "AXStaticText");
    EXPECT_EQ(shown.label, "⌃S  Save");
}

TEST_F(MacPanelTest, drawsItsContentForTheScreenBeforeItTakesItsFrame) {
    desktop::setScreens({{0, 0, 1440, 900, 0, 0, 1440, 900, 2}, {1440, 0, 1000, 900, 1440, 0, 1000, 900, 1}});
    const auto panel = makePanel();
    panel->setContent(content);
    panel->setFrame({1500.5, 74, 200, 100}, true);

    const auto once = ElementsAre(Pair(Rect{1500.5, 74, 200, 100}, 1.0));
    EXPECT_THAT(content->prepared, once);
    EXPECT_EQ(calls().back(), "[NSPanel setFrame:{1500.5, 74, 200, 100} display:YES]");

    panel->orderFrontRegardless();
    EXPECT_THAT(content->prepared, once);
}

TEST_F(MacPanelTest, drawsItsContentWhenItIsShownIfItWasNotToBeDisplayedBefore) {
    const auto panel = makePanel();
    panel->setContent(content);
    panel->setFrame({10, 20, 200, 100}, false);
    EXPECT_THAT(content->prepared, IsEmpty());
    EXPECT_EQ(calls().back(), "[NSPanel setFrame:{10, 20, 200, 100} display:NO]");

    panel->orderFrontRegardless();
    EXPECT_THAT(content->prepared, ElementsAre(Pair(Rect{10, 20, 200, 100}, 2.0)));
}

TEST_F(MacPanelTest, setsItsAlpha) {
    const auto panel = makePanel();
    forgetCalls();
    panel->setAlpha(0);

    EXPECT_THAT(calls(), ElementsAre("[NSPanel setAlphaValue:0]"));
}

TEST_F(MacPanelTest, comesToTheFrontWithoutActivating) {
    const auto panel = makePanel();
    forgetCalls();
    panel->orderFrontRegardless();

    EXPECT_THAT(calls(), ElementsAre("[NSPanel orderFrontRegardless]"));
    EXPECT_TRUE(desktop::panel()->visible);
}

TEST_F(MacPanelTest, fadesInAnAnimationGroupWithoutACompletion) {
    const auto panel = makePanel();
    forgetCalls();
    panel->animateAlpha(1, 0.12, {});

    EXPECT_THAT(calls(), ElementsAre("[NSAnimationContext runAnimationGroup:block]",
                                     "[NSAnimationContext setDuration:0.12]", "[NSPanel animator]",
                                     "[NSPanel setAlphaValue:1]"));
}

TEST_F(MacPanelTest, fadesInAnAnimationGroupAndCallsTheCompletionAtItsEnd) {
    const auto panel = makePanel();
    int completed = 0;
    forgetCalls();
    panel->animateAlpha(0, 0.22, [&] { ++completed; });
    EXPECT_THAT(calls(), ElementsAre("[NSAnimationContext runAnimationGroup:block completionHandler:block]",
                                     "[NSAnimationContext setDuration:0.22]", "[NSPanel animator]",
                                     "[NSPanel setAlphaValue:0]"));
    EXPECT_EQ(completed, 0);

    desktop::finishAnimations();
    EXPECT_EQ(completed, 1);
}

TEST_F(MacPanelTest, callsTheCompletionThoughThePanelHasGone) {
    auto panel = makePanel();
    int completed = 0;
    panel->animateAlpha(0, 0.22, [&, weak = std::weak_ptr(panel)] {
        EXPECT_TRUE(weak.expired());
        ++completed;
    });
    panel.reset();
    desktop::finishAnimations();

    EXPECT_EQ(completed, 1);
}

TEST_F(MacPanelTest, goesOffTheScreenAndStaysAlive) {
    const auto panel = makePanel();
    panel->orderFrontRegardless();
    forgetCalls();
    panel->orderOut();

    EXPECT_THAT(calls(), ElementsAre("[NSPanel orderOut:nil]"));
    EXPECT_FALSE(desktop::panel()->visible);
    EXPECT_FALSE(desktop::panel()->closed);
}

TEST_F(MacPanelTest, closesItsWindowWhenItGoes) {
    makePanel().reset();

    EXPECT_EQ(calls().back(), "[NSPanel close]");
}

} // namespace
} // namespace orvantile::test
