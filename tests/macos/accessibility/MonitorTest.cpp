// The shortcut monitor on the accessibility layer of macOS: what it asks of the system, and in which order.

#include "macos/accessibility/MonitorFixture.h"

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MacMonitorTest : public MonitorFixture {
protected:
    const Report saved{u"⌘S"_s, u"Save"_s};
};

std::vector<std::string> attaching(const std::string& process) {
    return {"AXObserverCreate " + process,
            "AXUIElementCreateApplication " + process,
            "AXObserverAddNotification " + process + " AXMenuItemSelected",
            "AXObserverAddNotification " + process + " AXMenuOpened",
            "AXObserverAddNotification " + process + " AXMenuClosed",
            "CFRunLoopAddSource " + process + " main kCFRunLoopDefaultMode"};
}

TEST_F(MacMonitorTest, asksNothingUntilStarted) {
    EXPECT_THAT(fake.calls, IsEmpty());
}

TEST_F(MacMonitorTest, attachesInOrder) {
    start();
    EXPECT_EQ(fake.calls, attaching("7"));
    EXPECT_EQ(fake.liveObjects(), 3) << "observer, its source and the application element";
}

TEST_F(MacMonitorTest, detachesBeforeItAttachesToAnother) {
    start();
    fake.calls.clear();
    workspace->activate(browserProcess);
    std::vector<std::string> expected{"CFRunLoopRemoveSource 7 main kCFRunLoopDefaultMode",
                                      "observer of 7 released"};
    std::ranges::copy(attaching("8"), std::back_inserter(expected));
    EXPECT_EQ(fake.calls, expected);
    EXPECT_EQ(fake.sourcesOnMainLoop(), 1);
    EXPECT_EQ(fake.liveObjects(), 3);
}

TEST_F(MacMonitorTest, activatingTheObservedApplicationAgainAsksNothing) {
    start();
    fake.calls.clear();
    workspace->activate(editorProcess);
    EXPECT_THAT(fake.calls, IsEmpty());
}

TEST_F(MacMonitorTest, withoutFrontmostApplicationTheFirstActivationAttaches) {
    monitor->start();
    EXPECT_THAT(fake.calls, IsEmpty());
    workspace->activate(editorProcess);
    EXPECT_EQ(fake.calls, attaching("7"));
}

TEST_F(MacMonitorTest, failedCreationIsTriedAgainAtTheNextActivation) {
    fake.unobservable[editorProcess] = kAXErrorCannotComplete;
    start();
    EXPECT_THAT(fake.calls, ElementsAre("AXObserverCreate 7"));
    fake.unobservable.clear();
    fake.withoutObserver.insert(editorProcess);
    workspace->activate(editorProcess);
    EXPECT_THAT(fake.calls, ElementsAre("AXObserverCreate 7", "AXObserverCreate 7"));
    fake.withoutObserver.clear();
    fake.calls.clear();
    workspace->activate(editorProcess);
    EXPECT_EQ(fake.calls, attaching("7"));
}

TEST_F(MacMonitorTest, handlesOnALaterTurnOfTheMainQueue) {
    start();
    fake.calls.clear();
    ASSERT_TRUE(editor.press(u"s"_s, command));
    EXPECT_EQ(fake.turnRunLoop(), 1);
    EXPECT_THAT(fake.calls, ElementsAre("dispatch_async_f main")) << "the callback itself reads nothing";
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_EQ(fake.turnMainQueue(), 1);
    EXPECT_THAT(reports, ElementsAre(saved));
    EXPECT_EQ(fake.liveObjects(), 3) << "the item has been released";
}

TEST_F(MacMonitorTest, readsTheTitleAndThenTheKeyEquivalent) {
    start();
    editor.press(u"s"_s, command);
    fake.turnRunLoop();
    fake.calls.clear();
    fake.turnMainQueue();
    EXPECT_THAT(fake.calls, ElementsAre("AXUIElementCopyAttributeValue AXTitle",
                                        "AXUIElementCopyAttributeValue AXMenuItemCmdChar",
                                        "AXUIElementCopyAttributeValue AXMenuItemCmdGlyph",
                                        "AXUIElementCopyAttributeValue AXMenuItemCmdModifiers"));
}

TEST_F(MacMonitorTest, anItemWithoutTitleIsAskedNothingElse) {
    start();
    editor.press(u"u"_s, command);
    fake.turnRunLoop();
    fake.calls.clear();
    fake.turnMainQueue();
    EXPECT_THAT(fake.calls, ElementsAre("AXUIElementCopyAttributeValue AXTitle"));
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(MacMonitorTest, reportsInOrderOfArrival) {
    start();
    editor.press(u"s"_s, 1);
    editor.press(u"\b"_s, command);
    editor.press(u""_s, 12);
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, ElementsAre(Report{u"⇧⌘S"_s, u"Save As…"_s}, Report{u"⌘⌫"_s, u"Delete"_s},
                                     Report{u"⌃F12"_s, u"Next Pane"_s}, saved));
}

TEST_F(MacMonitorTest, picksFromMenusAreNotReported) {
    start();
    editor.pick({u"File"_s, u"Save"_s});
    editor.pick({u"File"_s, u"Open Recent"_s, u"Clear Menu"_s});
    fake.turn();
    EXPECT_THAT(reports, IsEmpty());
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, ElementsAre(saved)) << "every menu has been counted out again";
}

TEST_F(MacMonitorTest, eachOpenSubmenuCounts) {
    start();
    editor.openMenu(u"File"_s);
    editor.openMenu(u"Open Recent"_s);
    editor.closeMenu(u"Open Recent"_s);
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, IsEmpty());
    editor.closeMenu(u"File"_s);
    editor.closeMenu(u"File"_s);
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(MacMonitorTest, switchingForgetsOpenMenus) {
    start();
    editor.openMenu(u"File"_s);
    fake.turn();
    workspace->activate(browserProcess);
    browser.press(u"t"_s, command);
    fake.turn();
    EXPECT_THAT(reports, ElementsAre(Report{u"⌘T"_s, u"New Tab"_s}));
}

TEST_F(MacMonitorTest, detachingForgetsOpenMenusEvenIfNothingIsAttachedInstead) {
    start();
    editor.openMenu(u"File"_s);
    fake.turn();
    editor.press(u"s"_s, command);
    fake.turnRunLoop();
    fake.unobservable[browserProcess] = kAXErrorCannotComplete;
    workspace->activate(browserProcess);
    fake.turnMainQueue();
    EXPECT_THAT(reports, ElementsAre(saved)) << "what was put off meets the count as it is now";
}

TEST_F(MacMonitorTest, whatTheLeftApplicationSaysIsNotHeard) {
    start();
    editor.press(u"s"_s, command);
    workspace->activate(browserProcess);
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(MacMonitorTest, aStaleClosingCountsAgainstTheNewApplication) {
    start();
    editor.closeMenu(u"File"_s);
    fake.turnRunLoop();
    workspace->activate(browserProcess);
    browser.openMenu(u"File"_s);
    fake.turn();
    browser.press(u"t"_s, command);
    fake.turn();
    EXPECT_THAT(reports, IsEmpty()) << "the stale closing came first, and the count has a floor";

    editor.closeMenu(u"File"_s);
    workspace->activate(editorProcess);
    editor.closeMenu(u"File"_s);
    fake.turnRunLoop();
    workspace->activate(browserProcess);
    browser.press(u"t"_s, command);
    fake.turn();
    EXPECT_THAT(reports, SizeIs(1));
}

TEST_F(MacMonitorTest, withoutPermissionItAttachesAndHearsNothing) {
    fake.trusted = false;
    start();
    EXPECT_EQ(fake.calls, attaching("7"));
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, IsEmpty());
    fake.trusted = true;
    workspace->activate(browserProcess);
    workspace->activate(editorProcess);
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(MacMonitorTest, anApplicationThatEndsBeforeItIsReadIsNotReported) {
    start();
    editor.press(u"s"_s, command);
    fake.turnRunLoop();
    fake.gone.insert(editorProcess);
    fake.turnMainQueue();
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(MacMonitorTest, attributesThatAreNotServedAreLeftOut) {
    start();
    fake.unservedAttribute[u"AXMenuItemCmdModifiers"_s] = kAXErrorAttributeUnsupported;
    editor.press(u"s"_s, 1);
    fake.turn();
    fake.unservedAttribute[u"AXMenuItemCmdChar"_s] = kAXErrorNoValue;
    editor.press(u"s"_s, command);
    fake.turn();
    EXPECT_THAT(reports, ElementsAre(Report{u"⌘S"_s, u"Save As…"_s}, Report{std::nullopt, u"Save"_s}));
}

TEST_F(MacMonitorTest, workThatIsPutOffKeepsTheMonitor) {
    start();
    editor.press(u"s"_s, command);
    fake.turnRunLoop();
    monitor.reset();
    EXPECT_EQ(fake.turnMainQueue(), 1);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(MacMonitorTest, destroyingItReleasesTheObserverAndNoMore) {
    start();
    fake.calls.clear();
    monitor.reset();
    EXPECT_THAT(fake.calls, ElementsAre("observer of 7 released"));
    EXPECT_EQ(fake.liveObjects(), 0);
    workspace->activate(browserProcess);
    EXPECT_THAT(fake.calls, SizeIs(1)) << "the registration outlives the monitor and does nothing";
}

TEST_F(MacMonitorTest, aThousandSwitchesLeaveNothingBehind) {
    start();
    for (int i = 0; i < 1000; ++i) {
        editor.press(u"s"_s, command);
        editor.pick({u"File"_s, u"Save"_s});
        fake.turnRunLoop();
        workspace->activate(browserProcess);
        browser.press(u"t"_s, command);
        fake.turn();
        workspace->activate(editorProcess);
        ASSERT_EQ(fake.liveObjects(), 3) << "after " << i << " rounds";
        ASSERT_EQ(fake.sourcesOnMainLoop(), 1);
        fake.calls.clear();
    }
    EXPECT_THAT(reports, SizeIs(2000));
}

} // namespace
} // namespace orvantile::test
