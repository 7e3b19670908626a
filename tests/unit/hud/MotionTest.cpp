#include "hud/EaseOut.h"
#include "hud/HUDView.h"
#include "hud/Spring.h"

#include <gmock/gmock.h>

namespace orvantile {
namespace {

constexpr Spring spring(0.42, 0.62);

TEST(Spring, startsAtRestAtZero) {
    EXPECT_EQ(spring.positionAt(0), 0);
    EXPECT_EQ(spring.positionAt(-1), 0);
    EXPECT_LT(spring.positionAt(1e-4), 1e-5); // no velocity yet
}

TEST(Spring, obeysItsDifferentialEquation) {
    // x'' = ω² (1 − x) − 2 ζ ω x'
    const double frequency = 2 * 3.14159265358979 / 0.42;
    const double step = 1e-4;
    for (double t = 0.01; t < 0.8; t += 0.037) {
        const double before = spring.positionAt(t - step);
        const double here = spring.positionAt(t);
        const double after = spring.positionAt(t + step);
        const double velocity = (after - before) / (2 * step);
        const double acceleration = (after - 2 * here + before) / (step * step);
        EXPECT_NEAR(acceleration, frequency * frequency * (1 - here) - 2 * 0.62 * frequency * velocity, 0.02)
            << "at " << t;
    }
}

TEST(Spring, overshootsOnceSlightly) {
    EXPECT_NEAR(spring.positionAt(0.268), 1.084, 0.001);
    EXPECT_LT(spring.positionAt(0.24), spring.positionAt(0.268));
    EXPECT_LT(spring.positionAt(0.30), spring.positionAt(0.268));
}

TEST(Spring, staysWithinTheToleranceOnceSettled) {
    const double settled = spring.settlingTime(0.001);
    EXPECT_LT(settled, 1);
    for (double t = settled; t < settled + 1; t += 0.003) {
        EXPECT_NEAR(spring.positionAt(t), 1, 0.001);
    }
}

TEST(EaseOut, isTheBezierOfStyleSheets) {
    EXPECT_NEAR(easeOut(0), 0, 1e-9);
    EXPECT_NEAR(easeOut(1), 1, 1e-9);
    // Points of the curve: t = 1/4, 1/2 and 3/4 in x = 1.74 (1−t) t² + t³, y = 3 (1−t) t² + t³.
    EXPECT_NEAR(easeOut(0.0971875), 0.15625, 1e-9);
    EXPECT_NEAR(easeOut(0.3425), 0.5, 1e-9);
    EXPECT_NEAR(easeOut(0.6665625), 0.84375, 1e-9);
}

TEST(EaseOut, clamps) {
    EXPECT_NEAR(easeOut(-3), 0, 1e-9);
    EXPECT_NEAR(easeOut(7), 1, 1e-9);
}

TEST(Entrance, popsFromSixTenthsWithOvershootWhileFadingIn) {
    const HUDView view{.popAnimation = true};
    EXPECT_DOUBLE_EQ(view.entranceAt(0).scale, 0.6);
    EXPECT_DOUBLE_EQ(view.entranceAt(0).opacity, 0);
    EXPECT_FALSE(view.entranceAt(0).settled);
    EXPECT_NEAR(view.entranceAt(0.268).scale, 1.0336, 0.001);
    EXPECT_DOUBLE_EQ(view.entranceAt(0.268).opacity, 1);
    EXPECT_FALSE(view.entranceAt(0.268).settled);
    EXPECT_DOUBLE_EQ(view.entranceAt(1).scale, 1);
    EXPECT_TRUE(view.entranceAt(1).settled);
}

TEST(Entrance, fadesInAtFullScaleWithoutPop) {
    const HUDView view{.popAnimation = false};
    for (const double elapsed : {0.0, 0.05, 0.14, 3.0}) {
        EXPECT_DOUBLE_EQ(view.entranceAt(elapsed).scale, 1);
    }
    EXPECT_NEAR(view.entranceAt(0).opacity, 0, 1e-9);
    EXPECT_NEAR(view.entranceAt(0.14 * 0.3425).opacity, 0.5, 1e-9);
    EXPECT_FALSE(view.entranceAt(0.139).settled);
    EXPECT_TRUE(view.entranceAt(0.14).settled);
    EXPECT_NEAR(view.entranceAt(0.14).opacity, 1, 1e-9);
}

} // namespace
} // namespace orvantile
