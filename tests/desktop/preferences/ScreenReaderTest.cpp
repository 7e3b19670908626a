// What a screen reader finds in the preferences, and does with them.

#include "desktop/preferences/PreferencesDesk.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::Contains;
using ::testing::ElementsAre;

class ScreenReaderTest : public ::testing::Test {
protected:
    void expectUsable(const Accessible& object) const {
        for (const auto state : {AccessibleState::enabled, AccessibleState::sensitive,
                                 AccessibleState::showing, AccessibleState::focusable}) {
            EXPECT_TRUE(reader.has(object, state))
                << reader.name(object).toStdString() << ' ' << static_cast<int>(state);
        }
    }

    void expectSwitch(const QString& name, const QString& help, bool on) const {
        const auto found = desk.switchNamed(name);
        expectUsable(found);
        EXPECT_EQ(reader.description(found), help);
        EXPECT_EQ(desk.isChecked(found), on) << name.toStdString();
    }

    void expectSlider(const QString& name, const AccessibleValue& expected) const {
        const auto found = desk.slider(name);
        expectUsable(found);
        const auto value = reader.value(found);
        ASSERT_TRUE(value) << name.toStdString();
        EXPECT_DOUBLE_EQ(value->minimum, expected.minimum);
        EXPECT_DOUBLE_EQ(value->maximum, expected.maximum);
        EXPECT_DOUBLE_EQ(value->current, expected.current);
        EXPECT_DOUBLE_EQ(value->step, expected.step);
    }

    /// Opens a picker and goes down or up to a choice, which the reader follows.
    void choose(const QString& shown, const QString& key, const QString& wanted) {
        const auto picker = desk.control(PreferencesDesk::comboBox, shown);
        ASSERT_TRUE(reader.perform(picker, u"ShowMenu"_s));
        const auto item = desk.control(u"list item"_s, wanted);
        desk.hands().press(key);
        ASSERT_TRUE(desk.await([&] { return reader.has(item, AccessibleState::focused); }));
        desk.hands().press(u"Return"_s);
    }

    PreferencesDesk desk{"translucent=false\nsoundEnabled=true\n"};
    const AccessibleClient& reader = desk.reader();
};

TEST_F(ScreenReaderTest, findsTheWindowAndItsTabs) {
    EXPECT_TRUE(desk.isShown(u"panel"_s, u"Tabs"_s)) << desk.outline().toStdString();
    for (const auto* label : {u"General", u"HUD", u"Sound"}) {
        const auto tab = desk.segment(QString::fromUtf16(label));
        expectUsable(tab);
        EXPECT_EQ(desk.isChecked(tab), reader.name(tab) == u"General"_s);
    }
    const auto window = desk.control(u"frame"_s, u"Orvantile Preferences"_s);
    EXPECT_TRUE(reader.has(window, AccessibleState::active));
    EXPECT_FALSE(reader.has(window, AccessibleState::resizable));
}

TEST_F(ScreenReaderTest, findsTheGeneralTab) {
    expectSwitch(u"Enable Orvantile"_s, {}, true);
    expectSwitch(u"Show in menu bar"_s, {}, true);
    expectUsable(desk.button(u"Re-check"_s));
    EXPECT_TRUE(desk.isShown(u"label"_s, u"Accessibility access granted"_s)) << desk.outline().toStdString();
    EXPECT_TRUE(desk.isShown(u"panel"_s, u"Permissions"_s)) << desk.outline().toStdString();
    expectUsable(desk.button(u"Reset to Defaults…"_s));
}

TEST_F(ScreenReaderTest, findsTheHudTab) {
    desk.showTab(u"HUD"_s);
    const auto position = desk.control(PreferencesDesk::comboBox, u"Bottom center"_s);
    EXPECT_THAT(reader.labels(position), ElementsAre(u"Position"_s)) << "its name is the choice";
    expectUsable(position);
    expectSlider(u"Duration"_s, {0.4, 3, 0.1, 1.2});
    expectSlider(u"Font size"_s, {12, 64, 1, 22});
    expectSlider(u"Background opacity"_s, {0.5, 1, 0.01, 0.75});
    const auto modeHelp = u"Auto follows the system Light/Dark setting."_s;
    for (const auto* label : {u"Auto", u"Light", u"Dark"}) {
        const auto segment = desk.segment(QString::fromUtf16(label));
        expectUsable(segment);
        EXPECT_EQ(reader.description(segment), modeHelp);
        EXPECT_EQ(desk.isChecked(segment), reader.name(segment) == u"Auto"_s);
    }
    expectSwitch(u"Show keyboard shortcut"_s,
                 u"Prefix the action name with the keys pressed (e.g. ⌘S  Save)."_s, true);
    expectSwitch(u"Translucent glass"_s,
                 u"Render the HUD with a frosted-glass background and a soft top sheen."_s, false);
    expectSwitch(u"Pop animation"_s, u"Spring-scale the HUD in when it appears."_s, true);
    expectUsable(desk.button(u"Test in chosen position"_s));
    for (const auto* group : {u"Display", u"Appearance", u"Mode"}) {
        EXPECT_TRUE(desk.isShown(u"panel"_s, QString::fromUtf16(group))) << desk.outline().toStdString();
    }
    EXPECT_TRUE(desk.isShown(u"graphic"_s, u"⌘S  Save"_s)) << desk.outline().toStdString();
}

TEST_F(ScreenReaderTest, findsTheSoundTab) {
    desk.showTab(u"Sound"_s);
    expectSwitch(u"Play sound on activation"_s, {}, true);
    const auto sound = desk.control(PreferencesDesk::comboBox, u"Pop"_s);
    expectUsable(sound);
    EXPECT_THAT(reader.labels(sound), ElementsAre(u"Sound"_s));
    ASSERT_TRUE(reader.perform(desk.switchNamed(u"Play sound on activation"_s), u"Toggle"_s));
    EXPECT_TRUE(desk.await([&] { return !reader.has(sound, AccessibleState::enabled); }));
    EXPECT_TRUE(reader.has(sound, AccessibleState::showing)) << "greyed, not absent";
}

TEST_F(ScreenReaderTest, movesSwitches) {
    const auto enabled = desk.switchNamed(u"Enable Orvantile"_s);
    ASSERT_TRUE(reader.perform(enabled, u"Toggle"_s));
    EXPECT_TRUE(desk.awaitStored(u"enabled"_s, u"false"_s));
    EXPECT_TRUE(desk.await([&] { return !desk.isChecked(enabled); }));
    ASSERT_TRUE(reader.perform(enabled, u"Toggle"_s));
    EXPECT_TRUE(desk.awaitStored(u"enabled"_s, u"true"_s));
    EXPECT_TRUE(desk.isChecked(enabled));
}

TEST_F(ScreenReaderTest, setsSliders) {
    desk.showTab(u"HUD"_s);
    const auto duration = desk.slider(u"Duration"_s);
    reader.setValue(duration, 1.2345);
    EXPECT_TRUE(desk.awaitStored(u"displaySeconds"_s, u"1.2345"_s));
    EXPECT_DOUBLE_EQ(reader.value(duration)->current, 1.2345);
    EXPECT_TRUE(desk.isShown(u"label"_s, u"1.2s"_s));
    reader.setValue(duration, 99);
    EXPECT_TRUE(desk.awaitStored(u"displaySeconds"_s, u"3"_s));
    const auto size = desk.slider(u"Font size"_s);
    ASSERT_TRUE(reader.perform(size, u"Increase"_s));
    EXPECT_TRUE(desk.awaitStored(u"fontSize"_s, u"23"_s));
    ASSERT_TRUE(reader.perform(size, u"Decrease"_s));
    EXPECT_TRUE(desk.awaitStored(u"fontSize"_s, u"22"_s));
    EXPECT_DOUBLE_EQ(reader.value(size)->current, 22);
    reader.setValue(desk.slider(u"Background opacity"_s), 0.57);
    EXPECT_TRUE(desk.awaitStored(u"flatOpacity"_s, u"0.57"_s));
    EXPECT_TRUE(desk.isShown(u"label"_s, u"56%"_s));
}

TEST_F(ScreenReaderTest, choosesInPickers) {
    desk.showTab(u"HUD"_s);
    choose(u"Bottom center"_s, u"Up"_s, u"Top center"_s);
    EXPECT_TRUE(desk.awaitStored(u"position"_s, u"topCenter"_s));
    EXPECT_TRUE(desk.await([&] { return desk.isShown(PreferencesDesk::comboBox, u"Top center"_s); }));
    ASSERT_TRUE(reader.perform(desk.segment(u"Dark"_s), u"Toggle"_s));
    EXPECT_TRUE(desk.awaitStored(u"appearance"_s, u"dark"_s));
    EXPECT_TRUE(desk.await([&] { return desk.isChecked(desk.segment(u"Dark"_s)); }));
    EXPECT_FALSE(desk.isChecked(desk.segment(u"Auto"_s)));
    desk.showTab(u"Sound"_s);
    choose(u"Pop"_s, u"Down"_s, u"Tink"_s);
    EXPECT_TRUE(desk.awaitStored(u"sound"_s, u"Tink"_s));
}

TEST_F(ScreenReaderTest, confirmsTheReset) {
    const auto inMenuBar = desk.switchNamed(u"Show in menu bar"_s);
    ASSERT_TRUE(reader.perform(inMenuBar, u"Toggle"_s));
    ASSERT_TRUE(desk.awaitStored(u"showInMenuBar"_s, u"false"_s));
    const auto ask = desk.button(u"Reset to Defaults…"_s);
    const auto dialogName = u"Reset all Orvantile preferences to their defaults?"_s;
    ASSERT_TRUE(reader.perform(ask, u"Press"_s));
    const auto dialog = desk.control(u"dialog"_s, dialogName);
    EXPECT_EQ(reader.description(dialog),
              u"Position, font size, sound, glass settings, and the menu-bar option will be restored. "
              "Accessibility permission is unaffected."_s);
    EXPECT_TRUE(reader.has(dialog, AccessibleState::modal));
    EXPECT_TRUE(desk.await([&] { return desk.focused() == u"Cancel"_s; }));
    ASSERT_TRUE(reader.perform(desk.button(u"Cancel"_s), u"Press"_s));
    EXPECT_TRUE(desk.await([&] { return !desk.isShown(u"dialog"_s, dialogName); }));
    EXPECT_FALSE(desk.isChecked(inMenuBar)) << "cancelled";
    ASSERT_TRUE(reader.perform(ask, u"Press"_s));
    ASSERT_TRUE(reader.perform(desk.button(u"Reset"_s), u"Press"_s));
    EXPECT_TRUE(desk.awaitStored(u"showInMenuBar"_s, u"true"_s));
    EXPECT_TRUE(desk.await([&] { return desk.isChecked(inMenuBar); }));
    EXPECT_TRUE(desk.await([&] { return !desk.isShown(u"dialog"_s, dialogName); }));
}

} // namespace
} // namespace orvantile::test
