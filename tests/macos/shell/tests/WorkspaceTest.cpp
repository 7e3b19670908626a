#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/desktop/MacWorkspace.h"

namespace orvantile::test {
namespace {

using platform::RunningApplication;
using platform::macos::MacWorkspace;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacWorkspaceTest : public ShellTest {
protected:
    platform::Workspace::RegistrationToken follow() {
        return workspace.observeActivations(
            [this](std::optional<RunningApplication> application) { seen.push_back(application); });
    }

    MacWorkspace workspace;
    std::vector<std::optional<RunningApplication>> seen;
};

TEST_F(MacWorkspaceTest, namesTheFrontmostApplicationByItsProcess) {
    desktop::setFrontmost(4711);

    EXPECT_EQ(workspace.frontmostApplication(), RunningApplication{4711});
    EXPECT_THAT(calls(), ElementsAre("[NSWorkspace sharedWorkspace]", "[NSWorkspace frontmostApplication]",
                                     "[NSRunningApplication processIdentifier]"));
}

TEST_F(MacWorkspaceTest, namesNobodyWhenNobodyIsInFront) {
    EXPECT_EQ(workspace.frontmostApplication(), std::nullopt);
}

TEST_F(MacWorkspaceTest, registersForActivationsWithTheWorkspacesOwnCentreOnTheMainQueue) {
    const auto token = follow();

    EXPECT_THAT(calls(), ElementsAre("[NSWorkspace sharedWorkspace]", "[NSWorkspace notificationCenter]",
                                     "[NSOperationQueue mainQueue]",
                                     "[NSNotificationCenter addObserverForName:"
                                     "\"NSWorkspaceDidActivateApplicationNotification\" object:nil "
                                     "queue:<NSOperationQueue main> usingBlock:block]"));
}

TEST_F(MacWorkspaceTest, tellsWhichApplicationWasActivated) {
    const auto token = follow();
    desktop::postActivation({.processIdentifier = 7});
    desktop::postActivation({.processIdentifier = 8});

    EXPECT_THAT(seen, ElementsAre(RunningApplication{7}, RunningApplication{8}));
}

TEST_F(MacWorkspaceTest, tellsNobodyWhenTheNotificationNamesNoApplication) {
    const auto token = follow();
    desktop::postActivation({});
    desktop::postActivation({.ofAnotherKind = true});

    EXPECT_THAT(seen, ElementsAre(std::nullopt, std::nullopt));
}

TEST_F(MacWorkspaceTest, keepsARegistrationWhoseTokenIsReleased) {
    follow().reset();
    auto token = follow();
    desktop::postActivation({.processIdentifier = 7});

    EXPECT_THAT(seen, ElementsAre(RunningApplication{7}, RunningApplication{7}));
}

TEST_F(MacWorkspaceTest, endsItsRegistrationsWhenItGoes) {
    {
        MacWorkspace other;
        const auto token =
            other.observeActivations([this](auto application) { seen.push_back(application); });
        EXPECT_EQ(desktop::activationObservers(), 1U);
    }
    EXPECT_EQ(desktop::activationObservers(), 0U);
    desktop::postActivation({.processIdentifier = 7});

    EXPECT_THAT(seen, IsEmpty());
}

TEST_F(MacWorkspaceTest, opensTheAccessibilityListOfPrivacyAndSecurity) {
    workspace.openAccessibilitySettings();

    const std::string page = "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";
    EXPECT_THAT(calls(),
                ElementsAre("[NSURL URLWithString:\"" + page + "\"]", "[NSWorkspace sharedWorkspace]",
                            "[NSWorkspace openURL:<NSURL " + page + ">]"));
}

TEST_F(MacWorkspaceTest, opensNothingWhenTheAddressCannotBeFormed) {
    desktop::setAcceptsAddresses(false);
    workspace.openAccessibilitySettings();

    EXPECT_THAT(CallRecorder::shared().callsTo("NSWorkspace"), IsEmpty());
}

} // namespace
} // namespace orvantile::test
