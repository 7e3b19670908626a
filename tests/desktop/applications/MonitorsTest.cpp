// Where the HUD comes up, and how large, on desktops of several monitors that change.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <cstdlib>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class MonitorsTest : public ::testing::Test {
protected:
    void start(const QString& scales = u"DUMMY0=1;DUMMY1=1"_s) {
        stage.session().setVariable(u"QT_SCREEN_SCALE_FACTORS"_s, scales);
        editor = stage.start(mousepad).handle;
        stage.startOrvantile();
        stage.awaitCommandsOf(mousepad);
    }

    /// Changes the outputs as a display settings dialog does.
    void arrange(const QStringList& arguments) {
        const auto randr = stage.session().start(u"xrandr"_s, arguments);
        ASSERT_EQ(randr->awaitExit(), 0) << randr->standardError().constData();
    }

    void addSecond(const QString& mode, const QString& place, const QString& beside) {
        arrange({u"--addmode"_s, u"DUMMY1"_s, mode});
        arrange({u"--output"_s, u"DUMMY1"_s, u"--mode"_s, mode, place, beside});
    }

    /// The frame of the HUD that is shown for a shortcut, in pixels.
    [[nodiscard]] QRect fire() {
        static_cast<void>(stage.huds().takeAll());
        stage.keys().press(u"Ctrl+A"_s);
        const auto shown = stage.huds().awaitNext();
        static_cast<void>(stage.huds().awaitHidden());
        return shown ? shown->frame : QRect();
    }

    /// The HUD follows monitors and windows within the time that their news takes.
    [[nodiscard]] QRect fireUntilOn(const QRect& monitor) {
        QRect frame;
        for (int attempt = 0; attempt < 20 && (frame.isEmpty() || !monitor.contains(frame)); ++attempt) {
            frame = fire();
        }
        return frame;
    }

    static void expectBottomCentre(const QRect& hud, const QRect& monitor, int gap) {
        EXPECT_TRUE(monitor.contains(hud))
            << hud.x() << "," << hud.y() << " " << hud.width() << "×" << hud.height();
        EXPECT_LE(std::abs(hud.center().x() - monitor.center().x()), 1);
        EXPECT_LE(std::abs(monitor.bottom() - hud.bottom() - gap), 1);
    }

    Stage stage{{.outputs = true}};
    xcb_window_t editor = XCB_NONE;
    static constexpr QRect first{0, 0, 1280, 800};
};

TEST_F(MonitorsTest, followsTheFocusedWindowToAMonitorOfAnotherScale) {
    addSecond(u"1280x800"_s, u"--right-of"_s, u"DUMMY0"_s);
    start(u"DUMMY0=1;DUMMY1=2"_s);
    const auto small = fireUntilOn(first);
    const int gap = first.bottom() - small.bottom();
    expectBottomCentre(small, first, gap);

    const QRect second{1280, 0, 1280, 800};
    stage.windows().moveTo(editor, {1400, 100});
    const auto large = fireUntilOn(second);
    expectBottomCentre(large, second, 2 * gap);
    EXPECT_LE(std::abs(large.width() - 2 * small.width()), 2);
    EXPECT_LE(std::abs(large.height() - 2 * small.height()), 2);

    stage.windows().moveTo(editor, {100, 100});
    EXPECT_EQ(fireUntilOn(first), small);
}

TEST_F(MonitorsTest, findsAMonitorThatIsPluggedInAndLosesOneThatIsPulled) {
    start();
    const auto before = fireUntilOn(first);
    const int gap = first.bottom() - before.bottom();
    addSecond(u"1280x800"_s, u"--right-of"_s, u"DUMMY0"_s);
    stage.windows().moveTo(editor, {1400, 100});
    const QRect second{1280, 0, 1280, 800};
    expectBottomCentre(fireUntilOn(second), second, gap);
    arrange({u"--output"_s, u"DUMMY1"_s, u"--off"_s});
    EXPECT_EQ(fireUntilOn(first), before);
}

TEST_F(MonitorsTest, comesUpOnMonitorsLeftOfAndAboveTheFirst) {
    start();
    const auto alone = fireUntilOn(first);
    const int gap = first.bottom() - alone.bottom();
    // The server moves the first one right, so that all coordinates stay positive.
    addSecond(u"1280x800"_s, u"--left-of"_s, u"DUMMY0"_s);
    stage.windows().moveTo(editor, {100, 100});
    expectBottomCentre(fireUntilOn(first), first, gap);
    const QRect right{1280, 0, 1280, 800};
    stage.windows().moveTo(editor, {1400, 100});
    expectBottomCentre(fireUntilOn(right), right, gap);
    arrange({u"--output"_s, u"DUMMY1"_s, u"--above"_s, u"DUMMY0"_s});
    stage.windows().moveTo(editor, {100, 100});
    expectBottomCentre(fireUntilOn(first), first, gap);
    const QRect below{0, 800, 1280, 800};
    stage.windows().moveTo(editor, {100, 900});
    expectBottomCentre(fireUntilOn(below), below, gap);
}

TEST_F(MonitorsTest, staysInTheMiddleOfAMonitorThatIsTurned) {
    start();
    const auto upright = fireUntilOn(first);
    const int gap = first.bottom() - upright.bottom();
    // What a turned monitor has to offer; the server's driver does not turn the picture itself.
    arrange({u"--output"_s, u"DUMMY0"_s, u"--mode"_s, u"800x1280"_s});
    const QRect turned{0, 0, 800, 1280};
    QRect frame;
    // The window manager tells the new work area a moment after the server tells the new monitor.
    for (int attempt = 0; attempt < 20 && frame.bottom() != turned.bottom() - gap; ++attempt) {
        frame = fire();
    }
    expectBottomCentre(frame, turned, gap);
    EXPECT_EQ(frame.size(), upright.size());
}

} // namespace
} // namespace orvantile::test
