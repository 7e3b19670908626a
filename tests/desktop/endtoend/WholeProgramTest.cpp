#include "desktop/endtoend/WholeProgram.h"
#include "desktop/endtoend/ShownCapsule.h"
#include "support/QtPrinting.h"

#include <chrono>
#include <cmath>
#include <gmock/gmock.h>
#include <set>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

constexpr int margin = 24; // between panel and edge of the screen

/// How much longer than the configured time a HUD may stay: fading out, and a busy machine.
constexpr auto fadeOut = 220ms;
constexpr auto slack = 700ms;

/// Short HUDs of flat black at the bottom right, beside every window.
constexpr auto quickAndFlat = "[General]\ndisplaySeconds=0.6\nposition=bottomRight\nsoundEnabled=false\n"
                              "translucent=false\nappearance=light\npopAnimation=false\n";

TEST(WholeProgramTest, namesAShortcutWithAllDefaultsAndQuits) {
    WholeProgram program("");
    EXPECT_TRUE(program.bar().isChecked(u"Enabled"_s));
    program.closePreferences();
    const auto hud = program.fire();
    EXPECT_EQ(hud.label, u"⌃A  Select All"_s);
    EXPECT_EQ(hud.frame.bottom() + 1, 800 - margin);
    EXPECT_LE(std::abs(hud.frame.left() + hud.frame.right() + 1 - 1280), 1) << "centred";
    const auto time = program.awaitHidden(hud);
    EXPECT_GE(time, 1.2s);
    EXPECT_LE(time, 1.2s + fadeOut + slack);
    EXPECT_EQ(program.settings(), "") << "nothing has been changed";

    ASSERT_TRUE(program.bar().choose(u"Quit Orvantile"_s));
    EXPECT_EQ(program.process().awaitExit(), 0);
    EXPECT_EQ(program.process().standardError().toStdString(), "");
    EXPECT_TRUE(program.bar().await([&] { return program.bar().items().isEmpty(); }));
}

TEST(WholeProgramTest, showsNothingWhileItIsSwitchedOff) {
    WholeProgram program(quickAndFlat);
    program.awaitHidden(program.fire());

    ASSERT_TRUE(program.bar().choose(u"Enabled"_s));
    EXPECT_TRUE(program.bar().await([&] { return !program.bar().isChecked(u"Enabled"_s); }));
    EXPECT_EQ(program.fireInVain(), u"nothing"_s);

    program.showPreferences();
    const auto enabled = program.switchNamed(u"Enable Orvantile"_s);
    EXPECT_FALSE(program.isChecked(enabled)) << "follows the menu";
    ASSERT_TRUE(program.reader().focus(enabled));
    program.stage().keys().press(u"space"_s);
    EXPECT_TRUE(program.await([&] { return program.isChecked(enabled); }));
    EXPECT_TRUE(program.bar().isChecked(u"Enabled"_s)) << "follows the preferences";
    program.awaitHidden(program.fire());

    program.showPreferences();
    program.stage().keys().press(u"space"_s);
    EXPECT_TRUE(program.await([&] { return !program.isChecked(enabled); }));
    EXPECT_EQ(program.fireInVain(), u"nothing"_s);

    ASSERT_TRUE(program.bar().choose(u"Enabled"_s));
    EXPECT_EQ(program.fire().label, u"⌃A  Select All"_s);
}

TEST(WholeProgramTest, theItemGoesAndComesWithTheSetting) {
    WholeProgram program(quickAndFlat);
    auto& bar = program.bar();
    const auto first = bar.items();
    const auto inMenuBar = program.switchNamed(u"Show in menu bar"_s);
    ASSERT_TRUE(program.reader().perform(inMenuBar, u"Toggle"_s));
    EXPECT_TRUE(bar.await([&] { return bar.items().isEmpty(); }));
    program.awaitHidden(program.fire());

    ASSERT_TRUE(program.reader().perform(inMenuBar, u"Toggle"_s));
    EXPECT_TRUE(bar.await([&] { return !bar.items().isEmpty(); }));
    EXPECT_NE(bar.items(), first) << "a new one";
    ASSERT_TRUE(bar.choose(u"Enabled"_s));
    EXPECT_TRUE(bar.await([&] { return !bar.isChecked(u"Enabled"_s); }));
    ASSERT_TRUE(bar.choose(u"Quit Orvantile"_s));
    EXPECT_EQ(program.process().awaitExit(), 0);
}

class EverySetting : public ::testing::Test {
protected:
    EverySetting() { program.showTab(u"HUD"_s); }

    void toggle(const QString& name) {
        ASSERT_TRUE(program.reader().perform(program.switchNamed(name), u"Toggle"_s));
    }

    void set(const QString& name, double value) const {
        program.reader().setValue(program.slider(name), value);
    }

    void pick(const QString& segment) {
        ASSERT_TRUE(program.reader().perform(program.segment(segment), u"Toggle"_s));
    }

    [[nodiscard]] ShownCapsule look(const ShownHud& hud) {
        return {program.stage().session().display(), hud.frame};
    }

    /// Fires. Black or white of that opacity is to be seen over the desktop, on which the HUD's shadow may
    /// lie.
    void expectBackground(int color, double opacity) {
        constexpr double darkestShadow = 0.3;
        const auto hud = program.fire();
        int seen = ShownCapsule::desktopGrey;
        while (isUp()) { // the strongest is the one between the fades
            const auto now = look(hud).prevailingGrey();
            seen = std::abs(now - ShownCapsule::desktopGrey) > std::abs(seen - ShownCapsule::desktopGrey)
                       ? now
                       : seen;
        }
        const double behind = ShownCapsule::desktopGrey * (1 - opacity);
        EXPECT_LE(seen, color * opacity + behind + 1);
        EXPECT_GE(seen, color * opacity + behind * (1 - darkestShadow) - 1);
        program.awaitHidden(hud);
    }

    /// Fires, and returns all widths that the capsule has until it goes.
    [[nodiscard]] std::set<int> widthsOfAHud() {
        const auto hud = program.fire();
        std::set<int> widths;
        while (isUp()) {
            widths.insert(look(hud).width());
        }
        program.awaitHidden(hud);
        widths.erase(0);
        return widths;
    }

    bool isUp() {
        program.stage().huds().takeAll();
        return program.stage().huds().isVisible();
    }

    /// Where HUDs of the present size are shown.
    [[nodiscard]] ShownHud fireOnce() {
        const auto hud = program.fire();
        program.awaitHidden(hud);
        return hud;
    }

    WholeProgram program{quickAndFlat};
};

TEST_F(EverySetting, aboutPlaceTimeAndTextIsSeenInTheNextHudAndAfterARestart) {
    const auto before = fireOnce();
    EXPECT_EQ(before.frame.bottomRight(), QPoint(1280 - margin - 1, 800 - margin - 1));
    program.chooseNeighbour(u"Bottom right"_s, u"Up"_s, u"Bottom left"_s);
    EXPECT_EQ(fireOnce().frame.bottomLeft(), QPoint(margin, 800 - margin - 1));

    set(u"Font size"_s, 40);
    const auto larger = fireOnce();
    EXPECT_GT(larger.frame.height(), before.frame.height() + 12);
    EXPECT_GT(larger.frame.width(), before.frame.width() * 5 / 4);

    toggle(u"Show keyboard shortcut"_s);
    const auto shorter = fireOnce();
    EXPECT_EQ(shorter.label, u"Select All"_s);
    EXPECT_LT(shorter.frame.width(), larger.frame.width());

    set(u"Duration"_s, 2);
    const auto longer = program.fire();
    const auto time = program.awaitHidden(longer);
    EXPECT_GE(time, 2s);
    EXPECT_LE(time, 2s + fadeOut + slack);

    ASSERT_TRUE(program.bar().choose(u"Quit Orvantile"_s));
    ASSERT_EQ(program.process().awaitExit(), 0);
    program.start();
    const auto again = program.fire();
    EXPECT_EQ(again.label, shorter.label);
    EXPECT_EQ(again.frame, shorter.frame);
}

TEST_F(EverySetting, aboutLooksIsSeenInTheNextHud) {
    constexpr int black = 0;
    constexpr int white = 255;
    expectBackground(black, 0.75);
    set(u"Background opacity"_s, 1);
    expectBackground(black, 1);
    pick(u"Dark"_s);
    expectBackground(white, 1);
    set(u"Background opacity"_s, 0.5);
    expectBackground(white, 0.5);
    pick(u"Auto"_s); // the desktop is a light one
    expectBackground(black, 0.5);

    const auto still = widthsOfAHud();
    ASSERT_FALSE(still.empty());
    EXPECT_LE(*still.rbegin() - *still.begin(), 2) << "no pop";
    toggle(u"Pop animation"_s);
    int growth = 0;
    for (int shot = 0; shot < 5 && growth < 10; ++shot) { // a busy machine may miss the short entrance
        const auto widths = widthsOfAHud();
        growth = widths.empty() ? 0 : *widths.rbegin() - *widths.begin();
    }
    EXPECT_GE(growth, 10);
    toggle(u"Pop animation"_s);

    const auto greys = [&] {
        const auto hud = program.fire();
        int most = 0;
        while (isUp()) {
            most = std::max(most, look(hud).greysFromTopToBottom());
        }
        return most;
    };
    const auto flat = greys();
    toggle(u"Translucent glass"_s);
    EXPECT_GT(greys(), flat + 10) << "sheen and shades";
}

} // namespace
} // namespace orvantile::test
