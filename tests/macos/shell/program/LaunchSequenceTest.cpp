#include "app/AppDelegate.h"
#include "macos/shell/program/ProgramTest.h"
#include "platform/macos/application/MacApplication.h"
#include "settings/Settings.h"

namespace orvantile::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Qt::StringLiterals::operator""_s;

/// A preferences window that the toolkit would make.
class ToolkitWindow final : public PresentableWindow {
public:
    void present() override {
        platform::Platform::current().activation->bringToFront(reinterpret_cast<std::uintptr_t>(view));
    }

private:
    void* view = desktop::makeToolkitView();
};

/// The program from its launch on.
class MacLaunchSequenceTest : public ProgramTest {
protected:
    void SetUp() override {
        if (platform::macos::MacApplication::hasLaunched()) {
            GTEST_SKIP() << "the program is launched once per process: run this test by itself";
        }
        Settings::shared().resetToDefaults();
        launch->onFinished(*platform.scheduler, [this] { delegate->applicationDidFinishLaunching(); });
        launch->onReopen([this](bool visible) { delegate->applicationShouldHandleReopen(visible); });
        forgetCalls();
    }

    platform::Platform& platform = platform::Platform::current();
    std::unique_ptr<platform::Launch> launch = platform::beginLaunch();
    int windows = 0;
    std::shared_ptr<AppDelegate> delegate = std::make_shared<AppDelegate>(platform, [this] {
        ++windows;
        return std::make_unique<ToolkitWindow>();
    });
};

TEST_F(MacLaunchSequenceTest, showsTheStatusItemFollowsTheFrontmostAsksForTrustAndOpensThePreferences) {
    desktop::setFrontmost(42);
    ax.trusted = false;
    desktop::finishLaunching();
    ax.turnMainQueue();

    EXPECT_THAT(
        callsTo({"NSStatusBar", "NSStatusItem", "NSStatusBarButton", "NSImage", "NSWorkspace",
                 "NSNotificationCenter", "NSApplication", "NSWindow"}),
        ElementsAre("[NSStatusBar systemStatusBar]", "[NSStatusBar statusItemWithLength:-1]",
                    "[NSImage imageWithSystemSymbolName:\"keyboard\" accessibilityDescription:\"Orvantile\"]",
                    "[NSImage setTemplate:YES]", "[NSStatusItem button]",
                    "[NSStatusBarButton setImage:<NSImage keyboard>]", "[NSStatusItem setMenu:<NSMenu>]",
                    "[NSWorkspace sharedWorkspace]", "[NSWorkspace frontmostApplication]",
                    "[NSWorkspace sharedWorkspace]", "[NSWorkspace notificationCenter]",
                    "[NSNotificationCenter addObserverForName:"
                    "\"NSWorkspaceDidActivateApplicationNotification\" object:nil "
                    "queue:<NSOperationQueue main> usingBlock:block]",
                    "[NSWindow styleMask]", "[NSWindow setStyleMask:7]",
                    "[NSWindow setReleasedWhenClosed:NO]", "[NSApplication activateIgnoringOtherApps:YES]",
                    "[NSWindow makeKeyAndOrderFront:nil]",
                    // The subscription to the enabled state delivers it once more, later.
                    "[NSImage imageWithSystemSymbolName:\"keyboard\" accessibilityDescription:\"Orvantile\"]",
                    "[NSImage setTemplate:YES]", "[NSStatusItem button]",
                    "[NSStatusBarButton setImage:<NSImage keyboard>]"));
    EXPECT_EQ(windows, 1);
    EXPECT_THAT(ax.calls, Contains(HasSubstr("AXIsProcessTrustedWithOptions")));
    EXPECT_THAT(ax.calls, Contains(HasSubstr("AXObserverCreate")));
}

TEST_F(MacLaunchSequenceTest, hasTheMenuOfTheStatusItem) {
    desktop::finishLaunching();

    EXPECT_THAT(
        desktop::menu(),
        ElementsAre(
            desktop::MenuItem{
                .title = "Enabled", .action = "toggleEnabled", .hasTarget = true, .on = true, .tag = 1},
            desktop::MenuItem{.separator = true},
            desktop::MenuItem{.title = "Preferences…", .action = "openPreferences", .hasTarget = true},
            desktop::MenuItem{.title = "Check for Updates…", .action = "checkForUpdates", .hasTarget = true},
            desktop::MenuItem{.separator = true},
            desktop::MenuItem{.title = "Quit Orvantile", .action = "terminate:", .keyEquivalent = "q"}));
}

TEST_F(MacLaunchSequenceTest, switchesOffAndChangesTheIconLater) {
    desktop::finishLaunching();
    ax.turnMainQueue();
    desktop::chooseItem("Enabled");
    EXPECT_FALSE(Settings::shared().enabled());
    EXPECT_EQ(desktop::storedDefaults().at("enabled"), desktop::DefaultsObject(false));
    EXPECT_FALSE(desktop::menu().front().on);
    EXPECT_EQ(desktop::statusItems().front().symbol, "keyboard");

    ax.turnMainQueue();
    EXPECT_EQ(desktop::statusItems().front().symbol, "keyboard.fill");
}

TEST_F(MacLaunchSequenceTest, showsTheStateThatWasChangedElsewhereWhenTheMenuOpens) {
    desktop::finishLaunching();
    Settings::shared().enabled = false;
    EXPECT_TRUE(desktop::menu().front().on);

    desktop::openMenu();
    EXPECT_FALSE(desktop::menu().front().on);
}

TEST_F(MacLaunchSequenceTest, takesTheStatusItemAwayAndBringsItBack) {
    desktop::finishLaunching();
    ax.turnMainQueue();
    Settings::shared().showInMenuBar = false;
    EXPECT_THAT(desktop::statusItems(), SizeIs(1));
    ax.turnMainQueue();
    EXPECT_THAT(desktop::statusItems(), IsEmpty());

    Settings::shared().enabled = false;
    Settings::shared().showInMenuBar = true;
    ax.turnMainQueue();
    ASSERT_THAT(desktop::statusItems(), SizeIs(1));
    EXPECT_EQ(desktop::statusItems().front().symbol, "keyboard.fill");
    EXPECT_FALSE(desktop::menu().front().on);
}

TEST_F(MacLaunchSequenceTest, opensTheOneWindowAgainOnEverySecondLaunch) {
    desktop::finishLaunching();
    forgetCalls();
    EXPECT_TRUE(desktop::launchAgain(false));

    EXPECT_EQ(windows, 1);
    EXPECT_THAT(callsTo({"NSApplication", "NSWindow"}),
                ElementsAre("[NSWindow styleMask]", "[NSApplication activateIgnoringOtherApps:YES]",
                            "[NSWindow makeKeyAndOrderFront:nil]"));
}

TEST_F(MacLaunchSequenceTest, startsTheUpdaterWithTheFirstCheckAndOnlyThen) {
    desktop::finishLaunching();
    EXPECT_THAT(callsTo({"SPUStandardUpdaterController"}), IsEmpty());
    desktop::chooseItem("Check for Updates…");
    desktop::chooseItem("Check for Updates…");

    EXPECT_THAT(callsTo({"SPUStandardUpdaterController"}),
                ElementsAre("[SPUStandardUpdaterController initWithStartingUpdater:YES updaterDelegate:nil "
                            "userDriverDelegate:nil]",
                            "[SPUStandardUpdaterController checkForUpdates:nil]",
                            "[SPUStandardUpdaterController checkForUpdates:nil]"));
}

TEST_F(MacLaunchSequenceTest, showsAShortcutOfTheFrontmostApplication) {
    desktop::setFrontmost(42);
    desktop::finishLaunching();
    FakeApplication application(
        ax, 42, {{.title = u"File"_s, .submenu = {{.title = u"Save"_s, .character = u"s"_s}}}});
    ASSERT_TRUE(application.press(u"s"_s, 0));
    ax.turn();

    ASSERT_TRUE(desktop::panel());
    EXPECT_EQ(desktop::panel()->label, "⌘S  Save");
    EXPECT_TRUE(desktop::panel()->visible);
}

} // namespace
} // namespace orvantile::test
