// The whole program on KWin, with its real blur and with keys from its own input.

#include "desktop/wayland/OtherCompositorStage.h"
#include "hud/HUDView.h"
#include "support/QtPrinting.h"
#include "support/desktop/HudListener.h"
#include "support/desktop/MainLoop.h"
#include "support/wayland/KWinControl.h"
#include "support/wayland/KWinInput.h"

#include <QDir>
#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

constexpr QSize screen{1280, 800};

class KWinTest : public ::testing::Test {
protected:
    /// Starts the program with these settings; other windows come in front of its preferences.
    void start(const QByteArray& settings) {
        stage.emplace(OtherWaylandSession::Compositor::kwinWithEffects, settings);
        control.emplace(stage->session().sessionBusAddress());
        input.emplace(stage->session().compositorSocket());
        huds.emplace(stage->session().accessibilityBusAddress());
        stage->startOrvantile();
        if (!stage->awaitPreferences()) {
            throw std::runtime_error("the preferences do not come: " + stage->complaints());
        }
        huds->attendTo(stage->orvantile().processIdentifier());
    }

    void startStripes() {
        ground = stage->session().start(QStringLiteral(ORVANTILE_STRIPES));
        ASSERT_EQ(ground->awaitLine(), "focus");
        ASSERT_TRUE(awaitThat([this] { return isStriped({100, 700}); }));
    }

    /// Shows the HUD; its label.
    [[nodiscard]] std::optional<QString> showHud() {
        return stage->pressTestButton() ? huds->awaitNext() : std::nullopt;
    }

    [[nodiscard]] bool isStriped(QPoint place) const {
        return contrastAt(control->screenshot(), place) > 100;
    }

    /// How much neighbouring pixels around a place differ.
    [[nodiscard]] static int contrastAt(const QImage& picture, QPoint place) {
        int found = 0;
        for (int x = place.x() - 8; x < place.x() + 8; ++x) {
            found = std::max(
                found, std::abs(qRed(picture.pixel(x, place.y())) - qRed(picture.pixel(x + 1, place.y()))));
        }
        return found;
    }

    void keep(const QString& name) const {
        if (const auto folder = qEnvironmentVariable("ORVANTILE_TEST_PICTURES"); !folder.isEmpty()) {
            control->screenshot().save(QDir(folder).filePath(name % u".png"_s));
        }
    }

    /// Fires a combination until it is named so; what is named else meanwhile fails the test.
    [[nodiscard]] bool awaitName(std::initializer_list<std::uint32_t> keys, const QString& label) {
        const QDeadlineTimer deadline(60s);
        while (!deadline.hasExpired()) {
            input->press(keys);
            if (const auto heard = huds->awaitNext(QDeadlineTimer(500ms))) {
                EXPECT_EQ(*heard, label);
                huds->awaitHidden();
                while (huds->awaitNext(QDeadlineTimer(0))) { // pressed before the first was named
                }
                return *heard == label;
            }
        }
        return false;
    }

    [[nodiscard]] QString fire(std::initializer_list<std::uint32_t> keys) {
        input->press(keys);
        const auto label = huds->awaitNext(QDeadlineTimer(2s));
        huds->awaitHidden();
        return label.value_or(u"nothing"_s);
    }

    /// How far a pixel is from grey.
    [[nodiscard]] static int colourAt(const QImage& picture, QPoint place) {
        const QColor colour = picture.pixelColor(place);
        const auto [least, most] = std::minmax({colour.red(), colour.green(), colour.blue()});
        return most - least;
    }

    std::optional<OtherCompositorStage> stage;
    std::optional<KWinControl> control;
    std::optional<KWinInput> input;
    std::optional<HudListener> huds;
    std::unique_ptr<ChildProcess> ground;
};

TEST_F(KWinTest, theHudIsAtItsPlaceAndLeavesFocusKeysAndMouseAlone) {
    start("displaySeconds=60\nposition=topRight\ntranslucent=false\nflatOpacity=1\nappearance=light\n");
    startStripes();
    const auto label = showHud();
    ASSERT_TRUE(label) << stage->complaints();
    const HUDView view{.text = *label};
    const auto size = view.fittingSize();
    constexpr double edge = 24;
    const auto capsule = view.capsule().translated(screen.width() - edge - size.width, edge).toAlignedRect();
    const auto isBlack = [&](QPoint place) { return qGray(control->screenshot().pixel(place)) < 24; };
    const QPoint left(capsule.left(), capsule.center().y());
    const QPoint right(capsule.right(), capsule.center().y());
    const QPoint top(capsule.center().x(), capsule.top());
    const QPoint bottom(capsule.center().x(), capsule.bottom());
    EXPECT_TRUE(awaitThat([&] { return isBlack(left + QPoint(4, 0)); }));
    keep(u"kwin-flat"_s);
    EXPECT_TRUE(isBlack(right - QPoint(4, 0)));
    EXPECT_TRUE(isBlack(top + QPoint(0, 4)));
    EXPECT_TRUE(isBlack(bottom - QPoint(0, 4)));
    EXPECT_FALSE(isBlack(left - QPoint(4, 0)));
    EXPECT_FALSE(isBlack(right + QPoint(4, 0)));
    EXPECT_FALSE(isBlack(top - QPoint(0, 4)));
    EXPECT_FALSE(isBlack(bottom + QPoint(0, 4)));
    input->click(capsule.center());
    EXPECT_EQ(ground->awaitLine(), "click");
    input->press({KEY_A});
    EXPECT_EQ(ground->awaitLine(), "key") << "and no word of a lost focus before";
}

TEST_F(KWinTest, glassIsBlurredWhileTheEffectIsLoaded) {
    start("displaySeconds=60\nposition=center\ntranslucent=true\n");
    startStripes();
    const auto label = showHud();
    ASSERT_TRUE(label) << stage->complaints();
    // Inside the capsule, above the label.
    const auto capsule = HUDView{.text = *label}.capsule();
    const QPoint place(screen.width() / 2, screen.height() / 2 - static_cast<int>(capsule.height() / 2) + 5);
    // Where nobody blurs, the capsule is of a plain tone; else the colours of the stripes come through,
    // mixed.
    const auto isPlain = [&] { return colourAt(control->screenshot(), place) < 3; };
    const auto isBlurred = [&] {
        const auto picture = control->screenshot();
        return colourAt(picture, place) > 10 && contrastAt(picture, place) < 8;
    };
    const auto seen = [&] { return control->screenshot().pixelColor(place).name().toStdString(); };
    EXPECT_TRUE(awaitThat(isPlain)) << seen();
    keep(u"kwin-plain"_s);
    control->loadEffect("blur");
    EXPECT_TRUE(awaitThat(isBlurred)) << seen();
    EXPECT_TRUE(isStriped({100, 700})) << "only behind the capsule";
    keep(u"kwin-blur"_s);
    control->unloadEffect("blur");
    EXPECT_TRUE(awaitThat(isPlain)) << seen();
    control->loadEffect("blur");
    EXPECT_TRUE(awaitThat(isBlurred)) << seen();
}

TEST_F(KWinTest, namesTheCommandsOfAGtkProgram) {
    start("displaySeconds=0.3\n");
    const auto notes = stage->session().writeFile(u"notes.txt"_s, "first line\n");
    stage->session().setVariable(u"GDK_BACKEND"_s, u"wayland"_s);
    const auto editor = stage->session().start(u"mousepad"_s, {u"--disable-server"_s, notes});
    ASSERT_TRUE(awaitName({KEY_LEFTCTRL, KEY_A}, u"⌃A  Select All"_s)) << stage->complaints();
    EXPECT_EQ(fire({KEY_LEFTCTRL, KEY_F}), u"⌃F  Find"_s);
    input->press({KEY_ESC});
    EXPECT_EQ(fire({KEY_X}), u"nothing"_s);
    EXPECT_EQ(fire({KEY_LEFTCTRL, KEY_Z}), u"⌃Z  Undo"_s);
}

TEST_F(KWinTest, namesTheCommandsOfAQtProgramWithTheHelper) {
    start("displaySeconds=0.3\n");
    const auto draft = stage->session().writeFile(u"draft.txt"_s, "a draft\n");
    const auto folders = QStringLiteral(ORVANTILE_HELPERS);
    stage->session().setVariable(u"QT_PLUGIN_PATH"_s, folders % u"/qt5:"_s % folders % u"/qt6"_s);
    stage->session().setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, u"orvantile"_s);
    stage->session().setVariable(u"QT_QPA_PLATFORM"_s, u"wayland"_s);
    const auto editor = stage->session().start(u"featherpad"_s, {u"--standalone"_s, draft});
    ASSERT_TRUE(awaitName({KEY_LEFTCTRL, KEY_N}, u"⌃N  New"_s)) << stage->complaints();
    EXPECT_EQ(fire({KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_S}), u"⌃⇧S  Save As"_s);
}

} // namespace
} // namespace orvantile::test
