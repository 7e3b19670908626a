// The preferences under real mouse and keyboard, with more than one window manager.

#include "desktop/preferences/PreferencesDesk.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>
#include <set>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const QByteArray settings = "translucent=false\nsoundEnabled=true\n";

class HandsTest : public ::testing::TestWithParam<WindowManager> {
protected:
    HandsTest() { desk.hands().moveTo({5, 5}); }

    void press(const QString& keys) { desk.hands().press(keys); }

    /// Presses keys until the keyboard speaks to the control.
    void tabTo(const QString& name) {
        constexpr int most = 15;
        for (int i = 0; i < most && desk.focused() != name; ++i) {
            const auto before = desk.focused();
            press(u"Tab"_s);
            ASSERT_TRUE(desk.await([&] { return desk.focused() != before; })) << before.toStdString();
        }
        ASSERT_EQ(desk.focused(), name);
    }

    /// The controls that the Tab key reaches, from the first of the tab selector on.
    [[nodiscard]] QStringList tabOrder(const QString& first) {
        QStringList order;
        tabTo(first);
        do {
            order.append(desk.focused());
            press(u"Tab"_s);
            EXPECT_TRUE(desk.await([&] { return desk.focused() != order.last(); }))
                << order.last().toStdString();
        } while (desk.focused() != first && order.size() < 20);
        return order;
    }

    void click(const Accessible& object) { desk.hands().click(reader.extents(object).center()); }

    /// Where the knob's centre of a slider is.
    [[nodiscard]] QPoint knob(const Accessible& slider) const {
        constexpr int margin = 11;
        const auto value = reader.value(slider).value();
        const auto area = reader.extents(slider);
        const double part = (value.current - value.minimum) / (value.maximum - value.minimum);
        return {area.x() + margin + static_cast<int>(part * (area.width() - 2 * margin)), area.center().y()};
    }

    [[nodiscard]] int differentPixels(const QImage& left, const QImage& right) const {
        int count = 0;
        for (int y = 0; y < std::min(left.height(), right.height()); ++y) {
            for (int x = 0; x < std::min(left.width(), right.width()); ++x) {
                count += left.pixel(x, y) != right.pixel(x, y) ? 1 : 0;
            }
        }
        return count;
    }

    PreferencesDesk desk{settings, {.windowManager = GetParam()}};
    const AccessibleClient& reader = desk.reader();
};

TEST_P(HandsTest, theTabKeyReachesTheChosenSegmentHoweverItWasChosen) {
    tabTo(u"Enable Orvantile"_s);
    desk.showTab(u"HUD"_s);
    tabTo(u"HUD"_s);
    press(u"Left"_s);
    EXPECT_TRUE(desk.await([&] { return desk.focused() == u"General"_s; }));
}

TEST_P(HandsTest, clicksMoveSwitchesAnywhereOnTheirRow) {
    const auto enabled = desk.switchNamed(u"Enable Orvantile"_s);
    const auto row = reader.extents(enabled);
    EXPECT_EQ(row.width(), 440) << "a magnifier must find all of it";
    desk.hands().click({row.right() - 25, row.center().y()});
    EXPECT_TRUE(desk.awaitStored(u"enabled"_s, u"false"_s));
    desk.hands().click({row.left() + 30, row.center().y()});
    EXPECT_TRUE(desk.awaitStored(u"enabled"_s, u"true"_s));
}

TEST_P(HandsTest, aPressThatEndsElsewhereMovesNothing) {
    const auto enabled = desk.switchNamed(u"Enable Orvantile"_s);
    const auto row = reader.extents(enabled);
    desk.hands().moveTo(row.center());
    desk.hands().holdButton();
    desk.hands().moveTo(row.center() + QPoint(0, 150));
    desk.hands().releaseButton();
    click(desk.switchNamed(u"Show in menu bar"_s)); // handled after it
    EXPECT_TRUE(desk.awaitStored(u"showInMenuBar"_s, u"false"_s));
    EXPECT_TRUE(desk.isChecked(enabled));
}

TEST_P(HandsTest, clicksChooseSegmentsAndSizeTheWindowByItsTab) {
    const auto chrome = desk.window().frame.height() - 340;
    click(desk.segment(u"Sound"_s));
    EXPECT_TRUE(desk.await([&] { return desk.window().frame.size() == QSize(480, chrome + 220); }))
        << desk.window().frame.height();
    click(desk.segment(u"HUD"_s));
    EXPECT_TRUE(desk.await([&] { return desk.window().frame.height() > chrome + 340; }));
    EXPECT_EQ(desk.window().frame.width(), 480);
    const auto dark = desk.segment(u"Dark"_s);
    click(dark);
    EXPECT_TRUE(desk.awaitStored(u"appearance"_s, u"dark"_s));
    EXPECT_TRUE(desk.isChecked(dark));
    click(desk.segment(u"General"_s));
    EXPECT_TRUE(desk.await([&] { return desk.window().frame.size() == QSize(480, chrome + 340); }));
}

TEST_P(HandsTest, draggingASliderRedrawsThePreviewAllTheWay) {
    desk.showTab(u"HUD"_s);
    const auto slider = desk.slider(u"Font size"_s);
    const auto strip = [&] { return reader.extents(desk.control(u"graphic"_s, u"⌘S  Save"_s)); };
    ASSERT_EQ(strip().height(), 110);
    const auto before = desk.picture(strip());
    ASSERT_TRUE(desk.await([&] { return desk.window().frame.height() > 450; }));
    const int whole = desk.window().frame.height();
    desk.hands().moveTo(knob(slider));
    desk.hands().holdButton();
    std::set<QString> seen;
    for (int step = 1; step <= 5; ++step) {
        const auto former = reader.value(slider)->current;
        desk.hands().moveTo(
            desk.window().frame.topLeft() +
            QPoint(0, reader.extents(slider).center().y() - desk.window().frame.top()) +
            QPoint(reader.extents(slider).left() - desk.window().frame.left() + 40 + 20 * step, 0));
        ASSERT_TRUE(desk.await([&] { return reader.value(slider)->current != former; }));
        const double size = reader.value(slider)->current;
        const double height = std::ceil(std::max(size * 1.25 + std::max(size * 1.1, 24.0) + 58, 90.0));
        EXPECT_TRUE(desk.await([&] { return strip().height() == static_cast<int>(height); })) << size;
        EXPECT_TRUE(desk.await([&] {
            return desk.window().frame.height() == whole + static_cast<int>(height) - 110;
        })) << "the window grows with it";
        seen.insert(desk.stored(u"fontSize"_s));
    }
    desk.hands().releaseButton();
    EXPECT_GT(seen.size(), 3U) << "stored while dragging";
    EXPECT_TRUE(desk.await([&] { return differentPixels(before, desk.picture(strip())) > 1000; }));
    const auto last = reader.value(slider)->current;
    EXPECT_NE(last, std::floor(last)) << "no steps";
}

TEST_P(HandsTest, pickersOpenUnderTheMouse) {
    desk.showTab(u"HUD"_s);
    click(desk.control(PreferencesDesk::comboBox, u"Bottom center"_s));
    const auto item = desk.control(u"list item"_s, u"Top left"_s);
    click(item);
    EXPECT_TRUE(desk.awaitStored(u"position"_s, u"topLeft"_s));
    (void)desk.control(PreferencesDesk::comboBox, u"Top left"_s);
    click(desk.control(PreferencesDesk::comboBox, u"Top left"_s));
    (void)desk.control(u"list item"_s, u"Center"_s);
    press(u"Escape"_s);
    EXPECT_TRUE(desk.await([&] { return !desk.isShown(u"list item"_s, u"Center"_s); }));
    EXPECT_TRUE(desk.isShown(PreferencesDesk::comboBox, u"Top left"_s)) << "the window is still there";
    EXPECT_EQ(desk.stored(u"position"_s), u"topLeft"_s);
}

TEST_P(HandsTest, tabKeyGoesThroughEachTabAsItIsRead) {
    EXPECT_EQ(tabOrder(u"General"_s), QStringList({u"General"_s, u"Enable Orvantile"_s, u"Show in menu bar"_s,
                                                   u"Re-check"_s, u"Reset to Defaults…"_s}));
    desk.showTab(u"HUD"_s);
    EXPECT_EQ(tabOrder(u"HUD"_s),
              QStringList({u"HUD"_s, u"Bottom center"_s, u"Duration"_s, u"Font size"_s, u"Auto"_s,
                           u"Show keyboard shortcut"_s, u"Translucent glass"_s, u"Background opacity"_s,
                           u"Pop animation"_s, u"Test in chosen position"_s}));
    ASSERT_TRUE(reader.perform(desk.switchNamed(u"Translucent glass"_s), u"Toggle"_s));
    ASSERT_TRUE(
        desk.await([&] { return !desk.isShown(PreferencesDesk::sliderRole, u"Background opacity"_s); }));
    ASSERT_TRUE(reader.perform(desk.switchNamed(u"Translucent glass"_s), u"Toggle"_s));
    (void)desk.slider(u"Background opacity"_s);
    EXPECT_EQ(tabOrder(u"Show keyboard shortcut"_s).mid(0, 4),
              QStringList({u"Show keyboard shortcut"_s, u"Translucent glass"_s, u"Background opacity"_s,
                           u"Pop animation"_s}))
        << "the row has come back";
    desk.showTab(u"Sound"_s);
    EXPECT_EQ(tabOrder(u"Sound"_s), QStringList({u"Sound"_s, u"Play sound on activation"_s, u"Pop"_s}));
}

TEST_P(HandsTest, focusIsVisibleWhereverItLands) {
    for (const auto* tab : {u"General", u"HUD", u"Sound"}) {
        const auto label = QString::fromUtf16(tab);
        desk.showTab(label);
        tabTo(label);
        QStringList visited;
        while (!visited.contains(desk.focused())) {
            visited.append(desk.focused());
            const auto before = desk.picture();
            press(u"Tab"_s);
            ASSERT_TRUE(desk.await([&] { return desk.focused() != visited.last(); }));
            const auto object = desk.focusedObject();
            ASSERT_TRUE(object);
            const auto place =
                reader.extents(*object).translated(-desk.window().frame.topLeft()).marginsAdded({4, 4, 4, 4});
            EXPECT_TRUE(desk.await([&] {
                return differentPixels(before.copy(place), desk.picture().copy(place)) > 60;
            })) << desk.focused().toStdString();
        }
    }
}

TEST_P(HandsTest, everythingWorksByKeyboardAlone) {
    tabTo(u"Enable Orvantile"_s);
    press(u"space"_s);
    EXPECT_TRUE(desk.awaitStored(u"enabled"_s, u"false"_s));
    tabTo(u"General"_s);
    press(u"Right"_s);
    EXPECT_TRUE(desk.await([&] { return desk.isChecked(desk.segment(u"HUD"_s)); }));
    tabTo(u"Bottom center"_s);
    press(u"Down"_s);
    EXPECT_TRUE(desk.awaitStored(u"position"_s, u"topLeft"_s));
    press(u"space"_s);
    (void)desk.control(u"list item"_s, u"Center"_s);
    press(u"Home"_s);
    press(u"Return"_s);
    EXPECT_TRUE(desk.awaitStored(u"position"_s, u"center"_s));
    tabTo(u"Duration"_s);
    const std::vector<std::pair<QString, double>> steps{
        {u"End"_s, 3},    {u"Home"_s, 0.4}, {u"Right"_s, 0.5},   {u"Up"_s, 0.6},
        {u"Left"_s, 0.5}, {u"Down"_s, 0.4}, {u"Page_Up"_s, 0.9}, {u"Page_Down"_s, 0.4}};
    for (const auto& [key, expected] : steps) {
        press(key);
        EXPECT_TRUE(desk.await([&] {
            return std::abs(reader.value(desk.slider(u"Duration"_s))->current - expected) < 1e-9;
        })) << key.toStdString();
    }
    tabTo(u"Auto"_s);
    press(u"Right"_s);
    EXPECT_TRUE(desk.awaitStored(u"appearance"_s, u"light"_s));
    press(u"Right"_s);
    EXPECT_TRUE(desk.awaitStored(u"appearance"_s, u"dark"_s));
    press(u"Left"_s);
    EXPECT_TRUE(desk.awaitStored(u"appearance"_s, u"light"_s));
}

TEST_P(HandsTest, buttonsTakeSpaceAndReturn) {
    const auto dialog = u"Reset all Orvantile preferences to their defaults?"_s;
    for (const auto* key : {u"space", u"Return"}) {
        tabTo(u"Reset to Defaults…"_s);
        press(QString::fromUtf16(key));
        ASSERT_TRUE(desk.await([&] { return desk.isShown(u"dialog"_s, dialog); }))
            << QString::fromUtf16(key).toStdString();
        ASSERT_TRUE(desk.await([&] { return desk.focused() == u"Cancel"_s; }));
        press(u"Escape"_s);
        ASSERT_TRUE(desk.await([&] { return !desk.isShown(u"dialog"_s, dialog); }));
        ASSERT_TRUE(desk.await([&] { return desk.focused() == u"Reset to Defaults…"_s; }));
    }
    EXPECT_EQ(desk.stored(u"soundEnabled"_s), u"true"_s) << "cancelled";
    ASSERT_TRUE(reader.perform(desk.switchNamed(u"Enable Orvantile"_s), u"Toggle"_s));
    ASSERT_TRUE(desk.awaitStored(u"enabled"_s, u"false"_s));
    tabTo(u"Reset to Defaults…"_s);
    press(u"space"_s);
    ASSERT_TRUE(desk.await([&] { return desk.focused() == u"Cancel"_s; }));
    press(u"Shift+Tab"_s);
    ASSERT_TRUE(desk.await([&] { return desk.focused() == u"Reset"_s; }));
    press(u"Return"_s);
    EXPECT_TRUE(desk.awaitStored(u"enabled"_s, u"true"_s));
    EXPECT_TRUE(desk.await([&] { return desk.isChecked(desk.switchNamed(u"Enable Orvantile"_s)); }));
}

INSTANTIATE_TEST_SUITE_P(windowManagers, HandsTest,
                         ::testing::Values(WindowManager::openbox, WindowManager::xfwm4),
                         [](const auto& tested) {
                             return std::string(tested.param == WindowManager::openbox ? "openbox" : "xfwm4");
                         });

} // namespace
} // namespace orvantile::test
