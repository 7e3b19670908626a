#include "hud/HUDController.h"
#include "macos/shell/program/ProgramTest.h"
#include "platform/macos/application/MacApplication.h"
#include "preferences/PreferencesView.h"
#include "settings/Settings.h"

#include <QAbstractButton>
#include <QComboBox>

namespace orvantile::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Qt::StringLiterals::operator""_s;

/// What the preferences ask of the system.
class MacPreferencesTest : public ProgramTest {
protected:
    MacPreferencesTest() {
        ax.trusted = false;
        forget();
    }

    void forget() {
        ax.calls.clear();
        forgetCalls();
    }

    /// The button of the view that says so.
    static void click(const QWidget& view, const QString& title) {
        for (auto* button : view.findChildren<QAbstractButton*>()) {
            if (button->text() == title) {
                button->click();
                return;
            }
        }
        ADD_FAILURE() << "no button " << title.toStdString();
    }

    platform::Platform& platform = platform::Platform::current();
    Settings settings{*platform.defaults};
};

TEST_F(MacPreferencesTest, promptOpenTheSystemSettingsAndReadThePermissionAgainHalfASecondLater) {
    PreferencesView view(settings, platform);
    forget();
    click(view, u"Open System Settings…"_s);

    EXPECT_THAT(ax.calls, ElementsAre("AXIsProcessTrustedWithOptions {AXTrustedCheckOptionPrompt=true}",
                                      "dispatch_after_f 500 ms main"));
    EXPECT_THAT(
        callsTo({"NSWorkspace", "NSTimer"}),
        ElementsAre("[NSWorkspace sharedWorkspace]",
                    "[NSWorkspace openURL:<NSURL "
                    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility>]"));

    ax.trusted = true;
    forget();
    ax.advance(0.5);
    ax.turnMainQueue();
    EXPECT_THAT(ax.calls, ElementsAre("AXIsProcessTrusted"));

    forget();
    click(view, u"Re-check"_s);
    EXPECT_THAT(ax.calls, ElementsAre("dispatch_after_f 500 ms main"));
    EXPECT_THAT(callsTo({"NSWorkspace"}), IsEmpty());
}

TEST_F(MacPreferencesTest, readNothingForATabThatHasGone) {
    {
        PreferencesView view(settings, platform);
        click(view, u"Open System Settings…"_s);
    }
    forget();
    ax.advance(1);
    ax.turnMainQueue();

    EXPECT_THAT(ax.calls, IsEmpty());
}

TEST_F(MacPreferencesTest, showATestOfTheHudThoughItIsSwitchedOff) {
    if (platform::macos::MacApplication::hasLaunched()) {
        GTEST_SKIP() << "the shared HUD is on the platform of the first launch: run this test by itself";
    }
    settings.enabled = false;
    PreferencesView view(settings, platform, PreferencesTab::hud);
    forget();
    click(view, u"Test in chosen position"_s);

    ASSERT_TRUE(desktop::panel());
    EXPECT_EQ(desktop::panel()->label, "⌘S  Save");
    EXPECT_TRUE(desktop::panel()->visible);
    EXPECT_THAT(calls(), Contains("[NSPanel orderFrontRegardless]"));
}

TEST_F(MacPreferencesTest, playTheSoundThatIsChosenOnceItIsStored) {
    PreferencesView view(settings, platform, PreferencesTab::sound);
    desktop::advance(0.1);
    EXPECT_THAT(callsTo({"NSSound"}), IsEmpty());

    forget();
    auto* picker = view.findChild<QComboBox*>();
    ASSERT_NE(picker, nullptr);
    picker->setCurrentIndex(2);
    Q_EMIT picker->activated(2);
    EXPECT_THAT(callsTo({"NSSound"}), IsEmpty());
    desktop::advance(0.1);

    EXPECT_EQ(desktop::storedDefaults().at("sound"), desktop::DefaultsObject(std::string("Glass")));
    EXPECT_THAT(callsTo({"NSSound"}), ElementsAre("[NSSound soundNamed:\"Glass\"]", "[NSSound play]"));
}

} // namespace
} // namespace orvantile::test
