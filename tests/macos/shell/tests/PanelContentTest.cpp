#include "macos/shell/tests/PanelTest.h"

namespace orvantile::test {
namespace {

using desktop::View;
using ::testing::AllOf;
using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::SizeIs;

constexpr auto pictureKind = "OrvantilePictureView";
constexpr auto blurKind = "NSVisualEffectView";

auto isView(const std::string& kind, double x, double y, double width, double height, double alpha) {
    const auto near = [](double value) { return DoubleNear(value, 1e-9); };
    return AllOf(Field(&View::kind, kind), Field(&View::x, near(x)), Field(&View::y, near(y)),
                 Field(&View::width, near(width)), Field(&View::height, near(height)),
                 Field(&View::alpha, near(alpha)));
}

class MacPanelContentTest : public MacPanelTest {
protected:
    MacPanelContentTest() { panel->setContent(content); }

    void show() {
        panel->setFrame({10, 20, 200, 100}, true);
        panel->orderFrontRegardless();
    }

    /// What a panel shows of a capsule that is 100 points wide, 40 high, 30 from the left and 10 from the
    /// top.
    void blurCapsule() { content->blurred.addRoundedRect(QRectF(30, 10, 100, 40), 20, 20); }

    std::shared_ptr<platform::Panel> panel = makePanel();
};

TEST_F(MacPanelContentTest, growsAndFadesInAboutItsCentre) {
    show();
    EXPECT_THAT(desktop::panel()->views, ElementsAre(isView(pictureKind, 50, 25, 100, 50, 0)));

    scheduler.advance(0.05);
    EXPECT_THAT(desktop::panel()->views.front().alpha, ::testing::Gt(0.3));
    EXPECT_THAT(desktop::panel()->views.front().alpha, ::testing::Lt(0.6));

    scheduler.advance(0.1);
    EXPECT_THAT(desktop::panel()->views, ElementsAre(isView(pictureKind, 0, 0, 200, 100, 1)));
}

TEST_F(MacPanelContentTest, isLeftAloneOnceItHasSettled) {
    show();
    scheduler.advance(0.2);
    forgetCalls();
    scheduler.advance(5);

    EXPECT_THAT(calls(), ::testing::IsEmpty());
}

TEST_F(MacPanelContentTest, isLeftAloneOnceThePanelIsOffTheScreen) {
    show();
    panel->orderOut();
    forgetCalls();
    scheduler.advance(5);

    EXPECT_THAT(calls(), ::testing::IsEmpty());
}

TEST_F(MacPanelContentTest, startsAfreshWithEachContent) {
    show();
    scheduler.advance(1);
    const auto next = std::make_shared<FakeContent>();
    panel->setContent(next);
    panel->setFrame({10, 20, 200, 100}, true);
    panel->orderFrontRegardless();

    EXPECT_THAT(desktop::panel()->views, ElementsAre(isView(pictureKind, 50, 25, 100, 50, 0)));
}

TEST_F(MacPanelContentTest, showsThePictureWithItsColoursAndAlpha) {
    content->colour = QColor(200, 100, 50, 128);
    show();

    const auto view = desktop::panel()->views.front();
    EXPECT_TRUE(view.hasLayerContents);
    EXPECT_EQ(view.pictureWidth, 200);
    EXPECT_EQ(view.pictureHeight, 100);
    // Premultiplied: half of each.
    EXPECT_EQ(desktop::pixelOf(pictureKind, 0, 0), 0x64321980U);
    EXPECT_EQ(desktop::pixelOf(pictureKind, 399, 199), 0x64321980U);
}

TEST_F(MacPanelContentTest, copiesThePictureOnceHoweverManyFramesShowIt) {
    show();
    forgetCalls();
    scheduler.advance(1);

    EXPECT_THAT(CallRecorder::shared().callsTo("NSImage"), ::testing::IsEmpty());
    EXPECT_THAT(CallRecorder::shared().callsTo("OrvantilePictureView"), SizeIs(::testing::Gt(4U)));
}

TEST_F(MacPanelContentTest, placesAPictureThatCoversAPartOfThePanel) {
    content->origin = QPoint(40, 20); // device pixels, two to the point
    show();
    scheduler.advance(1);

    EXPECT_THAT(desktop::panel()->views, ElementsAre(isView(pictureKind, 20, -10, 200, 100, 1)));
}

TEST_F(MacPanelContentTest, blursBelowThePictureWhereTheContentSaysSo) {
    blurCapsule();
    show();
    scheduler.advance(1);

    EXPECT_THAT(desktop::panel()->views,
                ElementsAre(isView(blurKind, 30, 50, 100, 40, 1), isView(pictureKind, 0, 0, 200, 100, 1)));
}

TEST_F(MacPanelContentTest, growsAndFadesTheBlurAlongWithThePicture) {
    blurCapsule();
    show();

    EXPECT_THAT(desktop::panel()->views,
                ElementsAre(isView(blurKind, 65, 50, 50, 20, 0), isView(pictureKind, 50, 25, 100, 50, 0)));
}

TEST_F(MacPanelContentTest, makesTheBlurInOrder) {
    blurCapsule();
    forgetCalls();
    panel->setFrame({10, 20, 200, 100}, true);
    auto made = CallRecorder::shared().callsTo(blurKind);
    made.resize(7);

    EXPECT_THAT(made,
                ElementsAre("[NSVisualEffectView initWithFrame:{0, 0, 100, 40}]",
                            "[NSVisualEffectView setMaterial:13]", "[NSVisualEffectView setBlendingMode:0]",
                            "[NSVisualEffectView setState:1]", "[NSVisualEffectView setEmphasized:YES]",
                            "[NSVisualEffectView setAppearance:<NSAppearance NSAppearanceNameDarkAqua>]",
                            "[NSVisualEffectView setMaskImage:<NSImage picture>]"));
    EXPECT_THAT(CallRecorder::shared().callsTo("OrvantileHostView"),
                ElementsAre("[OrvantileHostView addSubview:<NSVisualEffectView> positioned:-1 "
                            "relativeTo:<OrvantilePictureView>]"));
}

TEST_F(MacPanelContentTest, blursInTheLightMaterialForALightContent) {
    blurCapsule();
    content->dark = false;
    forgetCalls();
    show();

    EXPECT_THAT(calls(), ::testing::Contains(
                             "[NSVisualEffectView setAppearance:<NSAppearance NSAppearanceNameAqua>]"));
}

TEST_F(MacPanelContentTest, masksTheBlurToTheShape) {
    blurCapsule();
    show();

    constexpr unsigned opaque = 0x000000ff;
    EXPECT_EQ(desktop::pixelOf(blurKind, 0, 0), 0U);
    EXPECT_EQ(desktop::pixelOf(blurKind, 199, 79), 0U);
    EXPECT_EQ(desktop::pixelOf(blurKind, 100, 0), opaque);
    EXPECT_EQ(desktop::pixelOf(blurKind, 100, 40), opaque);
    EXPECT_EQ(desktop::pixelOf(blurKind, 2, 40), opaque);
}

TEST_F(MacPanelContentTest, blursNothingForAContentThatIsFlat) {
    show();

    EXPECT_THAT(CallRecorder::shared().callsTo(blurKind), ::testing::IsEmpty());
}

TEST_F(MacPanelContentTest, replacesTheBlurWhenTheFrameChanges) {
    blurCapsule();
    show();
    content->blurred = {};
    panel->setFrame({10, 20, 200, 100}, true);

    EXPECT_THAT(desktop::panel()->views, SizeIs(1));
}

TEST_F(MacPanelContentTest, showsNothingForAContentWithoutAPicture) {
    content->size = {0, 0};
    panel->setFrame({10, 20, 0, 0}, true);
    panel->orderFrontRegardless();

    EXPECT_FALSE(desktop::panel()->views.front().hasLayerContents);
}

} // namespace
} // namespace orvantile::test
