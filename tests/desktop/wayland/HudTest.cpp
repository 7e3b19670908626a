#include "desktop/wayland/Dock.h"
#include "desktop/wayland/WaylandFixture.h"
#include "hud/HUDController.h"
#include "platform/null/NullPlatform.h"
#include "settings/Settings.h"

#include <QDir>
#include <QElapsedTimer>
#include <algorithm>

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;

/// The whole HUD on a real compositor, as the program shows it.
class HudTest : public WaylandFixture, public ::testing::WithParamInterface<double> {
protected:
    HudTest() {
        platform->scheduler = std::make_unique<desktop::QtScheduler>();
        platform->screens = std::make_unique<WaylandScreens>(outputs, focused);
        platform->backdrop = std::make_unique<WaylandBackdrop>(globals);
        platform->panels =
            std::make_unique<WaylandPanels>(*connection, globals, outputs, *platform->scheduler, screens);
        settings.translucent = false;
        settings.flatOpacity = 1;
        settings.popAnimation = false;
        settings.appearance = HUDAppearance::light; // a black capsule
        settings.displaySeconds = 60;
    }

    /// The part of the picture that is as good as black: the capsule, without its shadow.
    static QRect capsuleIn(const QImage& picture) {
        constexpr int black = 24;
        QRect found;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (qGray(picture.pixel(x, y)) < black) {
                    found |= QRect(x, y, 1, 1);
                }
            }
        }
        return found;
    }

    /// Waits until the capsule has come to rest and returns where it is.
    QRect awaitCapsule(const QString& name) {
        QRect found;
        QImage picture;
        EXPECT_TRUE(awaitThat([&] {
            const auto before = picture;
            picture = desktop.screenshot();
            found = capsuleIn(picture);
            return !found.isEmpty() && picture == before;
        }));
        if (const auto folder = qEnvironmentVariable("ORVANTILE_TEST_PICTURES"); !folder.isEmpty()) {
            picture.save(QDir(folder).filePath(name % u".png"_s));
        }
        return found;
    }

    std::unique_ptr<Platform> platform = makeNullPlatform();
    Settings settings{*platform->defaults};
    std::shared_ptr<HUDController> controller = std::make_shared<HUDController>(*platform, settings);
};

/// How far the capsule is from the edges, in points.
struct Gaps {
    double left, right, top, bottom;
};

Gaps gapsOf(const QRect& capsule, const QSize& picture, double scale) {
    return {capsule.left() / scale, (picture.width() - capsule.right() - 1) / scale, capsule.top() / scale,
            (picture.height() - capsule.bottom() - 1) / scale};
}

// The panel keeps 24 points to the edges; the capsule in it has margins of 28, 22 and 36 points for its
// shadow.
constexpr double sideGap = 24 + 28;
constexpr double topGap = 24 + 22;
constexpr double bottomGap = 24 + 36;
constexpr double marginsDiffer = 36 - 22;

void expectAt(HUDPosition position, const Gaps& gaps, double tolerance) {
    const auto near = [&](double actual, double expected, const char* what) {
        EXPECT_NEAR(actual, expected, tolerance) << what;
    };
    const auto isOneOf = [&](std::initializer_list<HUDPosition> some) {
        return std::ranges::find(some, position) != some.end();
    };
    if (isOneOf({HUDPosition::topLeft, HUDPosition::bottomLeft})) {
        near(gaps.left, sideGap, "left");
    } else if (isOneOf({HUDPosition::topRight, HUDPosition::bottomRight})) {
        near(gaps.right, sideGap, "right");
    } else {
        near(gaps.left, gaps.right, "middle");
    }
    if (isOneOf({HUDPosition::topLeft, HUDPosition::topCenter, HUDPosition::topRight})) {
        near(gaps.top, topGap, "top");
    } else if (isOneOf({HUDPosition::bottomLeft, HUDPosition::bottomCenter, HUDPosition::bottomRight})) {
        near(gaps.bottom, bottomGap, "bottom");
    } else {
        near(gaps.bottom - gaps.top, marginsDiffer, "middle");
    }
}

TEST_P(HudTest, isWhereTheSettingsSayOnOutputsOfThisScale) {
    const double scale = GetParam();
    desktop.sway().run(u"output HEADLESS-1 scale "_s % QString::number(scale));
    ASSERT_TRUE(awaitThat([&] { return std::abs(screens.screens().front().scale - scale) < 0.01; }));
    for (const auto position : HUDPosition::allCases) {
        SCOPED_TRACE(qPrintable(position.rawValue()));
        settings.position = position;
        controller->show(u"⌃S  Save"_s);
        const auto capsule = awaitCapsule(position.rawValue() % u"-"_s % QString::number(scale));
        // The compositor rounds the size of a screen in points.
        const double tolerance = scale == 1 ? 1 : 1.5;
        expectAt(position, gapsOf(capsule, {1280, 800}, scale), tolerance);
        EXPECT_GT(capsule.height(), 40 * scale);
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, HudTest, ::testing::Values(1, 1.5, 2));

using HudWithDocksTest = HudTest;

TEST_P(HudWithDocksTest, staysOffDocks) {
    constexpr int thickness = 50;
    const Dock top(globals, ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP, thickness);
    const Dock left(globals, ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT, thickness);
    ASSERT_TRUE(awaitPixel({640, 10}, Dock::colour));
    ASSERT_TRUE(awaitPixel({10, 400}, Dock::colour));
    for (const auto position : HUDPosition::allCases) {
        SCOPED_TRACE(qPrintable(position.rawValue()));
        settings.position = position;
        controller->show(u"⌃S  Save"_s);
        const auto capsule = awaitCapsule(position.rawValue() % u"-docks"_s);
        expectAt(position,
                 gapsOf(capsule.translated(-thickness, -thickness), {1280 - thickness, 800 - thickness}, 1),
                 1);
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, HudWithDocksTest, ::testing::Values(1));

using HudLookTest = HudTest;

TEST_P(HudLookTest, isGlassThatLetsTheDesktopThrough) {
    desktop.sway().run(u"output HEADLESS-1 scale "_s % QString::number(GetParam()));
    settings.resetToDefaults();
    settings.displaySeconds = 60;
    settings.appearance = HUDAppearance::light;
    controller->show(u"⌃⇧S  Save As…"_s);
    const auto background = pixelAt({5, 5});
    QImage picture;
    ASSERT_TRUE(awaitThat([&] {
        const auto before = picture;
        picture = desktop.screenshot();
        return picture == before && picture.pixel(640, 705) != background;
    }));
    // A tint over the desktop: darker than it, and of its hue.
    const int capsuleRow = static_cast<int>(800 - (bottomGap + 8) * GetParam());
    const QColor tinted(picture.pixel(640, capsuleRow));
    EXPECT_LT(tinted.blue(), qBlue(background));
    EXPECT_GT(tinted.blue(), tinted.red());
    if (const auto folder = qEnvironmentVariable("ORVANTILE_TEST_PICTURES"); !folder.isEmpty()) {
        picture.save(QDir(folder).filePath(u"glass-"_s % QString::number(GetParam()) % u".png"_s));
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, HudLookTest, ::testing::Values(1, 2));

TEST_P(HudWithDocksTest, comesAndGoesInTime) {
    settings.displaySeconds = 0.5;
    QElapsedTimer clock;
    clock.start();
    controller->show(u"⌃S  Save"_s);
    ASSERT_TRUE(awaitThat([&] { return !capsuleIn(desktop.screenshot()).isEmpty(); }));
    ASSERT_TRUE(awaitThat([&] { return capsuleIn(desktop.screenshot()).isEmpty(); }));
    EXPECT_GE(clock.elapsed(), 500);
    EXPECT_TRUE(awaitPixel({640, 730}, pixelAt({5, 5}))) << "nothing is left of it";
}

} // namespace
} // namespace orvantile::platform::wayland
