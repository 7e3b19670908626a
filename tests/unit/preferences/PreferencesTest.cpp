#include "preferences/GeneralTab.h"
#include "preferences/HUDPreview.h"
#include "preferences/HUDTab.h"
#include "preferences/NumberFormats.h"
#include "preferences/PreferencesWindow.h"
#include "preferences/SoundTab.h"
#include "resources/resource_bundle_accessor.h"
#include "support/FakePlatform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QSlider>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

class PreferencesTest : public ::testing::Test {
protected:
    PreferencesTest() { window.present(); }

    /// The button with the title, or null.
    [[nodiscard]] QAbstractButton* button(const QString& title) const { return find(window, title); }

    [[nodiscard]] static QAbstractButton* find(const QWidget& parent, const QString& title) {
        for (auto* each : parent.findChildren<QAbstractButton*>()) {
            if (each->text() == title || each->accessibleName() == title) {
                return each;
            }
        }
        return nullptr;
    }

    /// Whether a visible label says exactly this.
    [[nodiscard]] bool says(const QString& text) const {
        return std::ranges::any_of(window.findChildren<QLabel*>(), [&](const auto* label) {
            return label->text() == text && label->isVisibleTo(&window);
        });
    }

    /// Whether some row shows these digits beside its slider.
    [[nodiscard]] QStringList digits() const {
        QStringList shown;
        for (const auto* label : window.findChildren<QLabel*>()) {
            shown.append(label->text());
        }
        return shown;
    }

    test::FakePlatform fakes;
    Settings settings{*fakes.platform().defaults};
    PreferencesWindow window{settings, fakes.platform()};
};

const QString backgroundNote =
    u"Orvantile will keep running in the background. To reopen this window, relaunch "
    u"Orvantile from Finder (or Spotlight)."_s;

TEST_F(PreferencesTest, windowIsTitledKeptAndAsLargeAsItsTab) {
    EXPECT_EQ(window.windowTitle(), u"Orvantile Preferences"_s);
    EXPECT_EQ(window.view().tab(), PreferencesTab::general);
    EXPECT_EQ(window.view().tabSize(), QSize(480, 340));
    window.view().select(PreferencesTab::sound);
    EXPECT_EQ(window.view().tabSize(), QSize(480, 220));
    window.close();
    EXPECT_FALSE(window.isVisible());
    fakes.log->clear();
    window.present();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.view().tab(), PreferencesTab::sound) << "the tab survives closing";
    EXPECT_EQ(fakes.log->back(), u"activation.bringToFront"_s) << "in front of other applications";
    window.view().select(PreferencesTab::hud);
    EXPECT_EQ(window.view().tabSize().width(), 480);
    EXPECT_EQ(window.minimumSize(), window.maximumSize()) << "not resizable";
}

TEST_F(PreferencesTest, backgroundNoteComesAndGoes) {
    EXPECT_FALSE(says(backgroundNote));
    settings.showInMenuBar = false;
    EXPECT_TRUE(says(backgroundNote));
    settings.showInMenuBar = true;
    EXPECT_FALSE(says(backgroundNote));
}

TEST_F(PreferencesTest, switchesWriteAndFollowTheSettings) {
    auto* enable = button(u"Enable Orvantile"_s);
    ASSERT_NE(enable, nullptr);
    EXPECT_TRUE(enable->isChecked());
    enable->click();
    EXPECT_FALSE(settings.enabled());
    EXPECT_EQ(fakes.defaults->stored[u"enabled"_s], platform::DefaultsValue(false));
    settings.enabled = true;
    EXPECT_TRUE(enable->isChecked());
}

TEST_F(PreferencesTest, grantedPermissionIsOnlyReadAgain) {
    EXPECT_TRUE(says(u"Accessibility access granted"_s));
    auto* check = button(u"Re-check"_s);
    ASSERT_NE(check, nullptr);
    fakes.accessibility->trusted = false;
    fakes.log->clear();
    check->click();
    EXPECT_THAT(*fakes.log, IsEmpty());
    fakes.scheduler->advance(0.49);
    EXPECT_TRUE(says(u"Accessibility access granted"_s));
    fakes.scheduler->advance(0.02);
    EXPECT_TRUE(says(u"Accessibility access required"_s));
    EXPECT_NE(button(u"Open System Settings…"_s), nullptr);
}

TEST(PermissionTest, isShownWhenItBecomesKnownAfterTheTabAppeared) {
    test::FakePlatform fakes;
    fakes.accessibility->trusted = false;
    Settings settings(*fakes.platform().defaults);
    PreferencesWindow window(settings, fakes.platform());
    window.present();
    const auto says = [&](const QString& text) {
        return std::ranges::any_of(window.findChildren<QLabel*>(),
                                   [&](const auto* label) { return label->text() == text; });
    };
    EXPECT_TRUE(says(u"Accessibility access required"_s));
    fakes.accessibility->becomeKnown(true);
    EXPECT_TRUE(says(u"Accessibility access granted"_s));
    window.view().select(PreferencesTab::sound);
    fakes.accessibility->becomeKnown(false);
    fakes.scheduler->advance(1);
    window.view().select(PreferencesTab::general);
    EXPECT_TRUE(says(u"Accessibility access required"_s));
}

TEST_F(PreferencesTest, permissionExplainsItselfOnHover) {
    fakes.accessibility->details = u"A helper is on."_s;
    window.view().select(PreferencesTab::sound);
    window.view().select(PreferencesTab::general);
    const auto* check = button(u"Re-check"_s);
    ASSERT_NE(check, nullptr);
    auto& row = *check->parentWidget();
    EXPECT_THAT(row.toolTip().toStdString(), ::testing::HasSubstr("A helper is on."));
    EXPECT_EQ(check->accessibleDescription(), u"A helper is on."_s);

    fakes.accessibility->details = u"“<b>editor”, used last, tells 4 commands."_s;
    QHelpEvent hover(QEvent::ToolTip, {}, {});
    QApplication::sendEvent(&row, &hover);
    EXPECT_THAT(row.toolTip().toStdString(), ::testing::HasSubstr("“&lt;b&gt;editor”, used last"));
    fakes.accessibility->details.clear();
    QApplication::sendEvent(&row, &hover);
    EXPECT_EQ(row.toolTip(), QString());
}

TEST_F(PreferencesTest, permissionExplainsItselfAfreshWhenTheButtonGetsTheFocus) {
    auto* check = button(u"Re-check"_s);
    ASSERT_NE(check, nullptr);
    fakes.accessibility->details = u"Keys come from the programs."_s;
    QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(check, &focus);
    EXPECT_EQ(check->accessibleDescription(), u"Keys come from the programs."_s);
}

TEST_F(PreferencesTest, missingPermissionIsPromptedForAndShownInTheSystemsSettings) {
    fakes.accessibility->trusted = false;
    window.view().select(PreferencesTab::sound);
    window.view().select(PreferencesTab::general);
    auto* open = button(u"Open System Settings…"_s);
    ASSERT_NE(open, nullptr) << "a tab that is built again reads the permission again";
    fakes.log->clear();
    open->click();
    EXPECT_EQ(*fakes.log,
              QStringList({u"accessibility.promptForTrust"_s, u"workspace.openAccessibilitySettings"_s}));
    fakes.accessibility->trusted = true;
    fakes.scheduler->advance(0.51);
    EXPECT_TRUE(says(u"Accessibility access granted"_s));
    fakes.log->clear();
    fakes.scheduler->advance(600);
    EXPECT_THAT(*fakes.log, IsEmpty()) << "nothing polls";
}

TEST_F(PreferencesTest, resetAsksFirst) {
    settings.fontSize = 40;
    settings.showInMenuBar = false;
    const auto answer = [&](const QString& title) {
        button(u"Reset to Defaults…"_s)->click();
        const auto dialogs = window.findChildren<QDialog*>();
        ASSERT_EQ(dialogs.size(), 1);
        EXPECT_THAT(digits(), Contains(u"Reset all Orvantile preferences to their defaults?"_s));
        EXPECT_THAT(digits(), Contains(u"Position, font size, sound, glass settings, and the menu-bar option "
                                       u"will be restored. Accessibility permission is unaffected."_s));
        find(*dialogs.front(), title)->click();
        EXPECT_FALSE(dialogs.front()->isVisible());
    };
    answer(u"Cancel"_s);
    EXPECT_EQ(settings.fontSize(), 40);
    answer(u"Reset"_s);
    EXPECT_EQ(settings.fontSize(), 22);
    EXPECT_FALSE(says(backgroundNote));
    EXPECT_TRUE(button(u"Show in menu bar"_s)->isChecked());
}

TEST_F(PreferencesTest, opacityRowIsAbsentWithGlass) {
    window.view().select(PreferencesTab::hud);
    EXPECT_EQ(window.findChildren<QSlider*>().size(), 2);
    button(u"Translucent glass"_s)->click();
    EXPECT_EQ(window.findChildren<QSlider*>().size(), 3);
    EXPECT_THAT(digits(), Contains(u"75%"_s));
    settings.translucent = true;
    EXPECT_EQ(window.findChildren<QSlider*>().size(), 2);
}

TEST_F(PreferencesTest, previewFollowsTheSettings) {
    window.view().select(PreferencesTab::hud);
    auto* preview = window.findChildren<QWidget*>().isEmpty() ? nullptr : [&] {
        for (auto* widget : window.findChildren<QWidget*>()) {
            if (auto* strip = dynamic_cast<HUDPreview*>(widget)) {
                return strip;
            }
        }
        return static_cast<HUDPreview*>(nullptr);
    }();
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->hud().text, u"⌘S  Save"_s);
    EXPECT_FALSE(preview->hud().popAnimation);
    EXPECT_EQ(preview->hud().blendingMode, BlendingMode::withinWindow);
    settings.showShortcut = false;
    EXPECT_EQ(preview->hud().text, u"Save"_s);
    EXPECT_TRUE(preview->hud().darkMode) << "auto, on a light desktop";
    fakes.appearance->change(true);
    EXPECT_FALSE(preview->hud().darkMode);
    settings.appearance = HUDAppearance::light;
    EXPECT_TRUE(preview->hud().darkMode);
    settings.appearance = HUDAppearance::dark;
    EXPECT_FALSE(preview->hud().darkMode);
    settings.fontSize = 64;
    EXPECT_EQ(preview->height(), 209);
}

TEST(HUDPreviewTest, stripHeights) {
    EXPECT_EQ(HUDPreview::stripHeight(12), 97);
    EXPECT_EQ(HUDPreview::stripHeight(22), 110);
    EXPECT_EQ(HUDPreview::stripHeight(64), 209);
    EXPECT_EQ(HUDPreview::stripHeight(0), 90);
    EXPECT_EQ(HUDPreview::stripHeight(-100), 90);
}

TEST(NumberFormatsTest, truncateExceptForSeconds) {
    EXPECT_EQ(secondsText(1.2345), u"1.2s"_s);
    EXPECT_EQ(secondsText(0.4), u"0.4s"_s);
    EXPECT_EQ(secondsText(2.96), u"3.0s"_s);
    EXPECT_EQ(pointsText(22.9), u"22pt"_s);
    EXPECT_EQ(pointsText(64), u"64pt"_s);
    EXPECT_EQ(percentText(0.57), u"56%"_s);
    EXPECT_EQ(percentText(1), u"100%"_s);
}

TEST_F(PreferencesTest, valuesOutOfRangeAreShownAndKept) {
    window.view().select(PreferencesTab::hud);
    settings.translucent = false;
    for (const double value : {0.0, -5.0, 1e9, 1000.0, 7.0, std::numeric_limits<double>::quiet_NaN()}) {
        settings.displaySeconds = value;
        settings.fontSize = value;
        settings.flatOpacity = value;
        EXPECT_FALSE(window.grab().isNull());
        for (const double kept : {settings.displaySeconds(), settings.fontSize(), settings.flatOpacity()}) {
            EXPECT_TRUE(kept == value || (std::isnan(kept) && std::isnan(value))) << value;
        }
    }
}

TEST_F(PreferencesTest, testButtonShowsAHudEvenWhenSwitchedOff) {
    // The shared controller shows it, on the platform in force.
    settings.enabled = false;
    window.view().select(PreferencesTab::hud);
    button(u"Test in chosen position"_s)->click();
    EXPECT_THAT(*fakes.log, Contains(u"panel.setContent ⌘S  Save"_s));
}

TEST_F(PreferencesTest, soundIsHeardOnceWhenItChanges) {
    window.view().select(PreferencesTab::sound);
    fakes.scheduler->turn();
    EXPECT_THAT(*fakes.log, Not(Contains(u"sounds.play Pop"_s))) << "opening the tab plays nothing";
    auto* picker = window.findChild<QComboBox*>();
    ASSERT_NE(picker, nullptr);
    picker->setCurrentIndex(2);
    Q_EMIT picker->activated(2);
    fakes.scheduler->turn();
    EXPECT_EQ(settings.sound(), HUDSound::glass);
    EXPECT_EQ(fakes.log->count(u"sounds.play Glass"_s), 1);
    Q_EMIT picker->activated(2);
    fakes.scheduler->turn();
    EXPECT_EQ(fakes.log->count(u"sounds.play Glass"_s), 1) << "the same choice again is no change";
    button(u"Play sound on activation"_s)->click();
    EXPECT_FALSE(picker->isEnabled());
    EXPECT_TRUE(picker->isVisible());
    button(u"Play sound on activation"_s)->click();
    fakes.scheduler->turn();
    EXPECT_TRUE(picker->isEnabled());
    EXPECT_EQ(fakes.log->filter(u"sounds.play"_s).size(), 1) << "switching it on plays nothing";
}

TEST(ResourceBundleTest, firstOfThePlacesThatOpensWins) {
    QTemporaryDir first;
    QTemporaryDir second;
    QFile(second.filePath(u"Picture.png"_s)).open(QIODevice::WriteOnly);
    EXPECT_FALSE(ResourceBundle::open(first.filePath(u"absent"_s)));
    const auto bundle = ResourceBundle::require({first.filePath(u"absent"_s), second.path(), first.path()});
    EXPECT_EQ(bundle.path(u"Picture"_s, u"png"_s), second.filePath(u"Picture.png"_s));
    EXPECT_EQ(bundle.path(u"Other"_s, u"png"_s), std::nullopt);
    EXPECT_EQ(ResourceBundle::candidates().size(), 3);
}

TEST(ResourceBundleTest, withoutAnyTheProgramStops) {
    EXPECT_DEATH(static_cast<void>(ResourceBundle::require({u"/nowhere/at/all"_s})),
                 "unable to find bundle named Orvantile_Orvantile");
}

} // namespace
} // namespace orvantile
