#include "hud/HUDView.h"
#include "hud/Spring.h"

#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

HUDView labelled(const QString& text, double fontSize = 22) {
    HUDView view;
    view.text = text;
    view.fontSize = fontSize;
    return view;
}

TEST(HUDViewTest, paddingsHaveFloors) {
    EXPECT_DOUBLE_EQ(labelled({}, 12).horizontalPadding(), 22);
    EXPECT_DOUBLE_EQ(labelled({}, 20).horizontalPadding(), 22);
    EXPECT_DOUBLE_EQ(labelled({}, 40).horizontalPadding(), 44);
    EXPECT_DOUBLE_EQ(labelled({}, 12).verticalPadding(), 12);
    EXPECT_DOUBLE_EQ(labelled({}, 21).verticalPadding(), 12);
    EXPECT_DOUBLE_EQ(labelled({}, 40).verticalPadding(), 22);
}

TEST(HUDViewTest, outerPaddingMakesRoomForTheShadow) {
    const auto view = labelled(u"Save"_s);
    const auto capsule = view.capsule();
    const auto size = view.fittingSize();
    EXPECT_DOUBLE_EQ(capsule.left(), 28);
    EXPECT_DOUBLE_EQ(capsule.top(), 22);
    EXPECT_DOUBLE_EQ(size.width - capsule.right(), 28);
    EXPECT_DOUBLE_EQ(size.height - capsule.bottom(), 36);
}

TEST(HUDViewTest, emptyTextIsThePaddedCapsuleAlone) {
    const auto capsule = labelled({}).capsule();
    EXPECT_DOUBLE_EQ(capsule.width(), 2 * 1.1 * 22);
    EXPECT_DOUBLE_EQ(capsule.height(), labelled(u"Save"_s).capsule().height());
}

TEST(HUDViewTest, heightDependsOnTheLinesAndNotOnTheScript) {
    const double one = labelled(u"Save"_s).capsule().height();
    for (const auto& text : {u"保存"_s, u"שמירה"_s, u"🎉 Ship"_s, u"?\u20DD Help"_s, u"ÅÇ̧"_s}) {
        EXPECT_DOUBLE_EQ(labelled(text).capsule().height(), one) << text.toStdString();
        EXPECT_GT(labelled(text).capsule().width(), 2 * 1.1 * 22) << text.toStdString();
    }
    EXPECT_GT(labelled(u"two\nlines"_s).capsule().height(), one + 20);
}

TEST(HUDViewTest, fiveThousandCharactersAreDrawnJustWhereTheyAreSeen) {
    const auto view = labelled(QString(5000, u'm'), 64);
    EXPECT_GT(view.fittingSize().width, 100'000);
    const auto seen = view.picture(1, platform::NoBackdrop{}, {50'000, 0, 1920, view.fittingSize().height});
    EXPECT_EQ(seen.width(), 1920);
    EXPECT_EQ(qAlpha(seen.pixel(960, seen.height() / 2)), 255);
}

TEST(HUDViewTest, popEntranceGrowsFadesInAndOvershoots) {
    HUDView view;
    view.popAnimation = true;
    EXPECT_DOUBLE_EQ(view.entranceAt(0).scale, 0.6);
    EXPECT_DOUBLE_EQ(view.entranceAt(0).opacity, 0);
    EXPECT_FALSE(view.entranceAt(0.1).settled);
    double highest = 0;
    for (int millisecond = 0; millisecond < 1000; ++millisecond) {
        const auto entrance = view.entranceAt(millisecond / 1000.0);
        highest = std::max(highest, entrance.scale);
        EXPECT_LE(entrance.opacity, 1);
    }
    EXPECT_NEAR(highest, 1.0335, 0.001);
    const auto end = view.entranceAt(3);
    EXPECT_TRUE(end.settled);
    EXPECT_DOUBLE_EQ(end.scale, 1);
    EXPECT_DOUBLE_EQ(end.opacity, 1);
}

TEST(HUDViewTest, plainEntranceOnlyFadesIn) {
    HUDView view;
    view.popAnimation = false;
    for (const double elapsed : {0.0, 0.05, 0.1, 0.14, 1.0}) {
        EXPECT_DOUBLE_EQ(view.entranceAt(elapsed).scale, 1);
    }
    EXPECT_NEAR(view.entranceAt(0).opacity, 0, 1e-9);
    EXPECT_GT(view.entranceAt(0.07).opacity, 0.5) << "ease-out is fast at first";
    EXPECT_DOUBLE_EQ(view.entranceAt(0.14).opacity, 1);
    EXPECT_FALSE(view.entranceAt(0.139).settled);
    EXPECT_TRUE(view.entranceAt(0.14).settled);
}

TEST(SpringTest, followsTheClosedForm) {
    const Spring spring(0.42, 0.62);
    EXPECT_DOUBLE_EQ(spring.positionAt(0), 0);
    EXPECT_DOUBLE_EQ(spring.positionAt(-1), 0);
    EXPECT_NEAR(spring.positionAt(0.2676), 1.0837, 0.0005) << "the first overshoot";
    EXPECT_NEAR(spring.positionAt(2), 1, 1e-6);
    const double settled = spring.settlingTime(0.001);
    for (int step = 0; step < 200; ++step) {
        EXPECT_NEAR(spring.positionAt(settled + step / 100.0), 1, 0.001);
    }
}

} // namespace
} // namespace orvantile
