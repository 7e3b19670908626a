#include "hud/HUDHostingView.h"

#include <gmock/gmock.h>
#include <vector>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordingBackdrop final : public platform::Backdrop {
public:
    [[nodiscard]] platform::BackdropPicture behind(const platform::Rect& rect) override {
        asked.push_back(rect);
        return answer;
    }

    platform::BackdropPicture answer = platform::NoBackdrop{};
    std::vector<platform::Rect> asked;
};

class HUDHostingViewTest : public ::testing::Test {
protected:
    RecordingBackdrop backdrop;
    const platform::Rect frame{100, 50, 200.5, 108.6};
};

TEST_F(HUDHostingViewTest, asksForTheBackdropOnlyWhenTranslucent) {
    HUDHostingView flat({.text = u"x"_s, .translucent = false}, backdrop);
    flat.prepare(frame, 1);
    EXPECT_THAT(backdrop.asked, IsEmpty());
    HUDHostingView glass({.text = u"x"_s, .translucent = true}, backdrop);
    glass.prepare(frame, 1);
    EXPECT_THAT(backdrop.asked, ElementsAre(frame));
}

TEST_F(HUDHostingViewTest, drawsAPictureOfThePanelAtEachScale) {
    HUDHostingView content({.text = u"x"_s, .translucent = false}, backdrop);
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
    HUDHostingView content(view, backdrop);
    backdrop.answer = platform::CompositorBlurs{};
    const auto size = content.fittingSize();
    content.prepare({0, 0, size.width, size.height}, 1);
    EXPECT_EQ(content.blurRegion().boundingRect(), view.capsule());
    backdrop.answer = platform::NoBackdrop{};
    content.prepare({0, 0, size.width, size.height}, 1);
    EXPECT_TRUE(content.blurRegion().isEmpty());
}

TEST_F(HUDHostingViewTest, leavesTheEntranceToTheFrames) {
    HUDHostingView content({.text = u"x"_s, .popAnimation = true}, backdrop);
    content.prepare(frame, 1);
    const auto first = content.frameAt(0);
    EXPECT_DOUBLE_EQ(first.scale, 0.6);
    EXPECT_DOUBLE_EQ(first.opacity, 0);
    EXPECT_EQ(first.image.cacheKey(), content.frameAt(10).image.cacheKey()); // nothing is drawn again
    EXPECT_TRUE(content.frameAt(10).settled);
}

TEST_F(HUDHostingViewTest, saysItsWords) {
    EXPECT_EQ(HUDHostingView({.text = u"⌃S  Save"_s}, backdrop).title(), u"⌃S  Save"_s);
}

} // namespace
} // namespace orvantile
