#include "platform/linux/x11/ScreenGrab.h"

#include "support/desktop/CurrentSession.h"
#include "support/desktop/XConnection.h"

#include <array>
#include <gmock/gmock.h>

namespace orvantile::platform::x11 {
namespace {

using test::CurrentSession;

constexpr std::uint32_t green = 0x00a000;
constexpr std::uint32_t red = 0xff0000;
constexpr PixelRect left{100, 100, 80, 40};
constexpr PixelRect right{300, 100, 80, 40};

/// A window of one colour above everything.
class Patch {
public:
    Patch(const test::XConnection& x_, const PixelRect& area) : x(x_), window(xcb_generate_id(x.get())) {
        const std::array<std::uint32_t, 2> values{green, 1};
        xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, x.root(), static_cast<std::int16_t>(area.x),
                          static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
                          static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          x.rootScreen().root_visual, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
                          values.data());
        xcb_map_window(x.get(), window);
        x.synchronize();
    }

    Patch(const Patch&) = delete;
    Patch& operator=(const Patch&) = delete;

    ~Patch() {
        xcb_destroy_window(x.get(), window);
        x.synchronize();
    }

    void turn(std::uint32_t colour) const {
        xcb_change_window_attributes(x.get(), window, XCB_CW_BACK_PIXEL, &colour);
        xcb_clear_area(x.get(), 0, window, 0, 0, 0, 0);
        x.synchronize();
    }

private:
    const test::XConnection& x;
    xcb_window_t window;
};

class ScreenGrabTest : public ::testing::Test {
protected:
    ScreenGrabTest() {
        session.start();
        connection->synchronize();
    }

    /// Empty when nothing is known or the colours differ.
    std::optional<std::uint32_t> colourOf(const PixelRect& area) {
        const auto image = grab.take(area);
        if (!image || image->size() != QSize(area.width, area.height)) {
            return std::nullopt;
        }
        const auto corner = image->pixel(0, 0) & 0xffffffU;
        const auto end = image->pixel(image->width() - 1, image->height() - 1) & 0xffffffU;
        return corner == end ? std::optional(corner) : std::nullopt;
    }

    test::XConnection x{CurrentSession::get().display()};
    Patch first{x, left};
    Patch second{x, right};
    std::unique_ptr<XConnection> connection = XConnection::open();
    X11Session session{*connection};
    X11Screens screens{*connection, session};
    ScreenGrab grab{*connection, screens};
};

TEST_F(ScreenGrabTest, takesTheScreenAsItWasWhenItWasAskedFor) {
    grab.request(left);
    connection->synchronize();
    first.turn(red);
    EXPECT_EQ(colourOf(left), green);
    EXPECT_EQ(colourOf(left), green) << "from memory";
    grab.forget();
    EXPECT_EQ(colourOf(left), red);
}

TEST_F(ScreenGrabTest, takesAnotherPlaceThanItHasAskedFor) {
    second.turn(red);
    grab.request(left);
    EXPECT_EQ(colourOf(right), red);
    grab.forget();
    EXPECT_EQ(colourOf(left), green);
}

TEST_F(ScreenGrabTest, forgetsWhatItHasAskedFor) {
    grab.request(left);
    connection->synchronize();
    first.turn(red);
    grab.forget();
    EXPECT_EQ(colourOf(left), red);
}

TEST_F(ScreenGrabTest, getsTheLatestOfManyQuestionsThatNobodyHasCollected) {
    second.turn(red);
    for (int i = 0; i < 500; ++i) {
        grab.request({left.x, left.y, 1 + i % left.width, left.height});
        // Ever larger ones, so that the memory shared with the server is exchanged while it writes.
        grab.request({0, 0, 1 + 2 * i, 1 + i});
    }
    grab.request(right);
    EXPECT_EQ(colourOf(right), red);
}

TEST_F(ScreenGrabTest, knowsNothingOfAPlaceOffTheScreen) {
    grab.request({-500, -500, 100, 100});
    EXPECT_EQ(grab.take({-500, -500, 100, 100}), std::nullopt);
}

} // namespace
} // namespace orvantile::platform::x11
