#include "hud/HUDHostingView.h"

#include "support/FakePlatform.h"

#include <gmock/gmock.h>
#include <vector>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordingBackdrop final : public platform::Backdrop {
public:
    void prepare(const platform::Rect& rect) override { announced.push_back(rect); }

    [[nodiscard]] platform::BackdropPicture behind(const platform::Rect& rect) override {
        EXPECT_THAT(announced, ::testing::Contains(rect));
        asked.push_back(rect);
        return answer;
    }

    platform::BackdropPicture answer = platform::NoBackdrop{};
    std::vector<platform::Rect> announced;
    std::vector<platform::Rect> asked;
};

class HUDHostingViewTest : public ::testing::Test {
protected:
    RecordingBackdrop backdrop;
    test::FakeScreens screens;
    const platform::Rect frame{100, 50, 200.5, 108.6};
};

TEST_F(HUDHostingViewTest, asksForTheBackdropOnlyWhenTranslucent) {
    HUDHostingView flat({.text = u"x"_s, .translucent = false}, backdrop, screens);
    flat.prepare(frame, 1);
    EXPECT_THAT(backdrop.announced, IsEmpty());
    EXPECT_THAT(backdrop.asked, IsEmpty());
    HUDHostingView glass({.text = u"x"_s, .translucent = true}, backdrop, screens);
    glass.prepare(frame, 1);
    EXPECT_THAT(backdrop.announced, ElementsAre(frame));
    EXPECT_THAT(backdrop.asked, ElementsAre(frame));
}

TEST_F(HUDHostingViewTest, drawsAPictureOfThePanelAtEachScale) {
    HUDHostingView content({.text = u"x"_s, .translucent = false}, backdrop, screens);
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        content.prepare(frame, scale);
        const auto image = content.frameAt(10).image;
        EXPECT_EQ(image.format(), QImage::Format_ARGB32_Premultiplied);
        EXPECT_EQ(image.devicePixelRatio(), scale);
        EXPECT_NEAR(image.width(), frame.width * scale, 1);
        EXPECT_NEAR(image.height(), frame.height * scale, 1);
    }
}

TEST_F(HUDHostingViewTest, asksACompositorToBlurTheCapsuleOnly) {
    const HUDView view{.text = u"⌃S  Save"_s};
    HUDHostingView content(view, backdrop, screens);
    backdrop.answer = platform::CompositorBlurs{};
    const auto size = content.fittingSize();
    content.prepare({0, 0, size.width, size.height}, 1);
    EXPECT_EQ(content.blurRegion().boundingRect(), view.capsule());
    backdrop.answer = platform::NoBackdrop{};
    content.prepare({0, 0, size.width, size.height}, 1);
    EXPECT_TRUE(content.blurRegion().isEmpty());
}

TEST_F(HUDHostingViewTest, leavesTheEntranceToTheFrames) {
    HUDHostingView content({.text = u"x"_s, .popAnimation = true}, backdrop, screens);
    content.prepare(frame, 1);
    const auto first = content.frameAt(0);
    EXPECT_DOUBLE_EQ(first.scale, 0.6);
    EXPECT_DOUBLE_EQ(first.opacity, 0);
    EXPECT_EQ(first.image.cacheKey(), content.frameAt(10).image.cacheKey()); // nothing is drawn again
    EXPECT_TRUE(content.frameAt(10).settled);
}

TEST_F(HUDHostingViewTest, drawsOfALongLabelWhatTheEntranceBringsOntoTheScreens) {
    HUDHostingView content({.text = u"m"_s.repeated(5000), .fontSize = 22}, backdrop, screens);
    QImage behind(1000, 108, QImage::Format_RGB32);
    behind.fill(Qt::gray);
    backdrop.answer = behind;
    const auto size = content.fittingSize();
    ASSERT_GT(size.width, 50'000);
    const platform::Rect place{500 - size.width / 2, 24, size.width, size.height};
    content.prepare(place, 2);
    const auto drawn = content.frameAt(10);
    EXPECT_NEAR(drawn.image.width(), 2 * 1000 / 0.6, 4);
    EXPECT_NEAR(drawn.origin.x(), 2 * (size.width / 2 - 500 / 0.6), 2);
    EXPECT_EQ(drawn.origin.y(), 0);
    ASSERT_EQ(backdrop.asked.size(), 1);
    EXPECT_NEAR(backdrop.asked[0].x, 0, 1e-6);
    EXPECT_NEAR(backdrop.asked[0].width, 1000, 1e-6);
}

TEST_F(HUDHostingViewTest, drawsNothingOfAPanelOffTheScreens) {
    HUDHostingView content({.text = u"x"_s}, backdrop, screens);
    content.prepare({5000, 5000, 100, 100}, 1);
    EXPECT_TRUE(content.frameAt(10).image.isNull());
}

TEST_F(HUDHostingViewTest, saysItsWords) {
    EXPECT_EQ(HUDHostingView({.text = u"⌃S  Save"_s}, backdrop, screens).title(), u"⌃S  Save"_s);
}

} // namespace
} // namespace orvantile
