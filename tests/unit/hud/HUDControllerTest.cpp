#include "hud/HUDController.h"
#include "hud/HUDView.h"
#include "support/FakePlatform.h"

#include <QRegularExpression>
#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HUDControllerTest : public ::testing::Test {
protected:
    /// The controller's calls on the panel and the sounds since the last time.
    QStringList takeCalls() {
        const auto calls = fakes.log->filter(QRegularExpression(u"^(panel|sounds)"_s));
        fakes.log->clear();
        return calls;
    }

    [[nodiscard]] const test::FakePanels::State& panel() const { return *fakes.panels->state; }

    test::FakePlatform fakes;
    Settings settings{*fakes.platform().defaults};
    std::shared_ptr<HUDController> controller = std::make_shared<HUDController>(fakes.platform(), settings);
};

const QStringList showCalls{u"panel.setFrame display yes"_s, u"panel.setAlpha 0"_s,
                            u"panel.orderFrontRegardless"_s, u"panel.animateAlpha 1 in 0.12"_s};

TEST_F(HUDControllerTest, firstShowStepByStep) {
    EXPECT_THAT(takeCalls(), IsEmpty());
    controller->show(u"⌃S  Save"_s);
    EXPECT_EQ(takeCalls(), QStringList({u"panels.create"_s, u"panel.setContent ⌃S  Save"_s}) + showCalls +
                               QStringList{u"sounds.play Pop"_s});
    EXPECT_EQ(fakes.scheduler->pending(), 2) << "the fade-in and the hide timer";
}

TEST_F(HUDControllerTest, panelIsMadeOnceAsAnOverlayThatNobodyCanTouch) {
    controller->show(u"one"_s);
    controller->show(u"two"_s);
    EXPECT_EQ(takeCalls().count(u"panels.create"_s), 1);
    const auto& attributes = fakes.panels->attributes;
    EXPECT_EQ(attributes.size, (platform::Size{200, 60}));
    EXPECT_TRUE(attributes.floatsAboveEverything && attributes.joinsAllWorkspaces &&
                attributes.ignoresMouseEvents);
    EXPECT_FALSE(attributes.activates || attributes.hasShadow);
}

TEST_F(HUDControllerTest, fadesOutAfterItsTimeAndIsThenTakenOff) {
    controller->show(u"label"_s);
    takeCalls();
    fakes.scheduler->advance(1.19);
    EXPECT_THAT(takeCalls(), IsEmpty());
    fakes.scheduler->advance(0.02);
    EXPECT_THAT(takeCalls(), ElementsAre(u"panel.animateAlpha 0 in 0.22 then"_s));
    fakes.scheduler->advance(0.2);
    EXPECT_THAT(takeCalls(), IsEmpty());
    fakes.scheduler->advance(0.02);
    EXPECT_THAT(takeCalls(), ElementsAre(u"panel.orderOut"_s));
    EXPECT_FALSE(panel().visible);
}

TEST_F(HUDControllerTest, secondShowReplacesTheTextAndGetsItsFullTime) {
    controller->show(u"one"_s);
    fakes.scheduler->advance(1);
    controller->show(u"two"_s);
    EXPECT_EQ(panel().content->title(), u"two"_s);
    takeCalls();
    fakes.scheduler->advance(1.15);
    EXPECT_THAT(takeCalls(), IsEmpty()) << "the first timer would have fired by now";
    fakes.scheduler->advance(0.1);
    EXPECT_THAT(takeCalls(), ElementsAre(u"panel.animateAlpha 0 in 0.22 then"_s));
}

TEST_F(HUDControllerTest, showDuringTheFadeOutIsTakenOffByTheEarlierCompletion) {
    controller->show(u"one"_s);
    fakes.scheduler->advance(1.3);
    takeCalls();
    controller->show(u"two"_s);
    EXPECT_EQ(takeCalls(),
              QStringList{u"panel.setContent two"_s} + showCalls + QStringList{u"sounds.play Pop"_s});
    fakes.scheduler->advance(0.2);
    EXPECT_THAT(takeCalls(), ElementsAre(u"panel.orderOut"_s));
    EXPECT_FALSE(panel().visible);
    controller->show(u"three"_s);
    EXPECT_TRUE(panel().visible);
}

TEST_F(HUDControllerTest, soundIsChosenAndCanBeOff) {
    settings.sound = HUDSound::morse;
    controller->show(u"label"_s);
    EXPECT_THAT(takeCalls().filter(u"sounds"_s), ElementsAre(u"sounds.play Morse"_s));
    settings.soundEnabled = false;
    controller->show(u"label"_s);
    EXPECT_THAT(takeCalls().filter(u"sounds"_s), IsEmpty());
}

TEST_F(HUDControllerTest, neitherEnabledNorShowShortcutMatters) {
    settings.enabled = false;
    settings.showShortcut = false;
    controller->show(u"⌃S  Save"_s);
    EXPECT_TRUE(panel().visible);
    EXPECT_EQ(panel().content->title(), u"⌃S  Save"_s);
}

TEST_F(HUDControllerTest, hideAfterTheControllerHasGoneDoesNothing) {
    controller->show(u"label"_s);
    controller.reset();
    takeCalls();
    fakes.scheduler->advance(5);
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(HUDControllerTest, zeroAndNegativeTimesHideAtOnce) {
    for (const double seconds : {0.0, -5.0}) {
        settings.displaySeconds = seconds;
        controller->show(u"label"_s);
        takeCalls();
        fakes.scheduler->turn();
        EXPECT_THAT(takeCalls(), ElementsAre(u"panel.animateAlpha 0 in 0.22 then"_s));
    }
}

TEST_F(HUDControllerTest, sevenPositionsWithFractionalSizes) {
    fakes.screens->main = platform::Screen{{-300.5, -50, 1000, 800}, {-300.5, -10.25, 1000, 730.5}, 1};
    settings.fontSize = 22.4;
    controller->show(u"label"_s);
    const auto size = panel().content->fittingSize();
    const double left = -300.5 + 24;
    const double middle = 199.5 - 0.5 * size.width;
    const double right = 699.5 - size.width - 24;
    const double top = 720.25 - size.height - 24;
    const double bottom = -10.25 + 24;
    const double centre = 355 - 0.5 * size.height;
    const std::vector<std::pair<HUDPosition::Case, QPointF>> places{
        {HUDPosition::center, {middle, centre}},       {HUDPosition::topCenter, {middle, top}},
        {HUDPosition::bottomCenter, {middle, bottom}}, {HUDPosition::topLeft, {left, top}},
        {HUDPosition::topRight, {right, top}},         {HUDPosition::bottomLeft, {left, bottom}},
        {HUDPosition::bottomRight, {right, bottom}}};
    for (const auto& [position, origin] : places) {
        settings.position = position;
        controller->show(u"label"_s);
        const auto& frame = panel().frame;
        EXPECT_DOUBLE_EQ(frame.x, origin.x()) << position;
        EXPECT_DOUBLE_EQ(frame.y, origin.y()) << position;
        EXPECT_EQ(frame.width, size.width);
        EXPECT_EQ(frame.height, size.height);
    }
}

TEST_F(HUDControllerTest, longLabelHangsOverTheEdges) {
    controller->show(QString(400, u'm'));
    EXPECT_LT(panel().frame.minX(), 0);
    EXPECT_GT(panel().frame.maxX(), 1000);
    EXPECT_DOUBLE_EQ(panel().frame.midX(), 500);
}

TEST_F(HUDControllerTest, withoutMainScreenTheFirstOfAllIsUsed) {
    fakes.screens->main.reset();
    fakes.screens->all = {{{0, 0, 600, 400}, {0, 0, 600, 400}, 1},
                          {{600, 0, 800, 600}, {600, 0, 800, 600}, 2}};
    controller->show(u"label"_s);
    EXPECT_DOUBLE_EQ(panel().frame.midX(), 300);
}

TEST_F(HUDControllerTest, withoutAnyScreenTheProgramStops) {
    fakes.screens->main.reset();
    fakes.screens->all.clear();
    EXPECT_DEATH(controller->show(u"label"_s), "no screen");
}

/// The middle of the capsule's left end: its background alone.
QColor background(const platform::PanelContent& content) {
    const auto frame = content.frameAt(100);
    return frame.image.pixelColor(28 + 12, frame.image.height() / 2 - 7);
}

TEST_F(HUDControllerTest, isDrawnInTheToneOppositeToTheAppearance) {
    settings.translucent = false;
    settings.flatOpacity = 1;
    const auto isDark = [&] {
        controller->show(u"label"_s);
        panel().content->prepare(panel().frame, 1);
        return background(*panel().content) == QColor(Qt::black);
    };
    settings.appearance = HUDAppearance::light;
    EXPECT_TRUE(isDark());
    settings.appearance = HUDAppearance::dark;
    EXPECT_FALSE(isDark());
    settings.appearance = HUDAppearance::auto_;
    fakes.appearance->dark = true;
    EXPECT_FALSE(isDark());
    fakes.appearance->dark = false;
    EXPECT_TRUE(isDark());
}

TEST_F(HUDControllerTest, optionsAreReadAtEachShow) {
    controller->show(u"label"_s);
    const auto small = panel().content->fittingSize();
    settings.fontSize = 44;
    EXPECT_EQ(panel().content->fittingSize(), small) << "what is up stays as it is";
    controller->show(u"label"_s);
    EXPECT_GT(panel().content->fittingSize().height, small.height);
}

} // namespace
} // namespace orvantile
