#include "desktop/wayland/WaylandFixture.h"
#include "support/wayland/VirtualKeyboard.h"
#include "support/wayland/VirtualPointer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <algorithm>
#include <poll.h>

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;
using test::turnFor;
using Qt::StringLiterals::operator""_s;

class WaylandPanelTest : public WaylandFixture {
protected:
    WaylandPanelTest() { panel = panels.create({.size = {200, 60}}); }

    void show(const Rect& frame, const std::shared_ptr<PanelContent>& content) {
        panel->setContent(content);
        panel->setFrame(frame, true);
        panel->setAlpha(0);
        panel->orderFrontRegardless();
        panel->animateAlpha(1, 0.05, {});
    }

    void show() { show(place, std::make_shared<BarContent>()); }

    // The panel of 200 × 60 at (100, 500) from below on a screen of 800 lines.
    static constexpr Rect place{100, 500, 200, 60};
    static constexpr QPoint middle{200, 270};
    static constexpr QPoint margin{110, 245};

    std::shared_ptr<Panel> panel;
};

TEST_F(WaylandPanelTest, comesUpAtItsPlaceAndGoes) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, BarContent::colour));
    const auto picture = desktop.screenshot();
    EXPECT_EQ(picture.size(), QSize(1280, 800));
    EXPECT_EQ(picture.pixel(margin), Ground::colour);
    // The bar is the middle half of the panel.
    EXPECT_EQ(picture.pixel(149, 270), Ground::colour);
    EXPECT_EQ(picture.pixel(150, 270), BarContent::colour);
    EXPECT_EQ(picture.pixel(249, 270), BarContent::colour);
    EXPECT_EQ(picture.pixel(250, 270), Ground::colour);
    EXPECT_EQ(picture.pixel(200, 254), Ground::colour);
    EXPECT_EQ(picture.pixel(200, 255), BarContent::colour);
    panel->orderOut();
    EXPECT_TRUE(awaitPixel(middle, Ground::colour));
}

TEST_F(WaylandPanelTest, leavesTheFocusTheKeysAndTheMouseToTheWindowBelow) {
    showGround();
    test::VirtualPointer mouse;
    test::VirtualKeyboard keyboard;
    // A window hears a new keyboard after a moment.
    ASSERT_TRUE(awaitThat([&] {
        keyboard.press(u"x"_s);
        return ground.keys > 0;
    }));
    show();
    ASSERT_TRUE(awaitPixel(middle, BarContent::colour));
    EXPECT_EQ(desktop.sway().focusedTitle(), u"ground"_s);
    EXPECT_TRUE(ground.isActiveWindow());
    mouse.click(middle, {1280, 800});
    EXPECT_TRUE(awaitThat([&] { return ground.clicks == 1; }));
    turnFor(50);
    const int before = ground.keys;
    keyboard.press(u"x"_s);
    EXPECT_TRUE(awaitThat([&] { return ground.keys == before + 1; }));
    EXPECT_EQ(desktop.sway().focusedTitle(), u"ground"_s);
}

TEST_F(WaylandPanelTest, isNoWindowOfTheDesktop) {
    showGround();
    const auto before = desktop.sway().tree();
    show();
    ASSERT_TRUE(awaitPixel(middle, BarContent::colour));
    EXPECT_EQ(desktop.sway().tree(), before);
}

TEST_F(WaylandPanelTest, showsAnotherContentOfAnotherSizeInPlaceOfTheFirst) {
    showGround();
    show();
    ASSERT_TRUE(awaitPixel(middle, BarContent::colour));
    show({600, 100, 400, 80}, std::make_shared<BarContent>(Size{400, 80}));
    ASSERT_TRUE(awaitPixel({800, 660}, BarContent::colour));
    EXPECT_EQ(pixelAt(middle), Ground::colour);
}

TEST_F(WaylandPanelTest, overhangsTheScreenWithoutHarm) {
    showGround();
    show({-9360, 100, 20000, 60}, std::make_shared<BarContent>(Size{20000, 60}));
    ASSERT_TRUE(awaitPixel({640, 670}, BarContent::colour));
    EXPECT_EQ(pixelAt({0, 670}), BarContent::colour);
    EXPECT_EQ(pixelAt({1279, 670}), BarContent::colour);
    show({-5000, -5000, 100, 50}, std::make_shared<BarContent>(Size{100, 50}));
    EXPECT_TRUE(awaitPixel({640, 670}, Ground::colour)) << "nothing of it is on the screen";
    show();
    EXPECT_TRUE(awaitPixel(middle, BarContent::colour));
}

TEST_F(WaylandPanelTest, fadesInAndOut) {
    showGround();
    panel->setContent(std::make_shared<BarContent>());
    panel->setFrame(place, true);
    panel->setAlpha(0);
    panel->orderFrontRegardless();
    panel->animateAlpha(0.5, 0.1, {});
    ASSERT_TRUE(awaitThat([&] { return qRed(pixelAt(middle)) >= 126; }));
    EXPECT_NEAR(qRed(pixelAt(middle)), 128, 2);
    EXPECT_NEAR(qGreen(pixelAt(middle)), 80, 2);
    bool completed = false;
    panel->animateAlpha(0, 0.1, [&] { completed = true; });
    EXPECT_TRUE(awaitThat([&] { return completed; }));
    EXPECT_TRUE(awaitPixel(middle, Ground::colour));
}

/// How many messages from the compositor have arrived but wait to be read is not told; whether any come is.
bool isSilent(int descriptor, int milliseconds) {
    pollfd state{descriptor, POLLIN, 0};
    return ::poll(&state, 1, milliseconds) == 0;
}

TEST_F(WaylandPanelTest, rests) {
    show();
    turnFor(300);
    EXPECT_TRUE(isSilent(connection->descriptor(), 500)) << "while a panel is shown";
    panel->orderOut();
    turnFor(100);
    EXPECT_TRUE(isSilent(connection->descriptor(), 500)) << "while none is shown";
}

TEST_F(WaylandPanelTest, handsOverItsFirstPictureEachTime) {
    // The time of the first picture on its way to the compositor, and of the compositor's word that it is
    // shown.
    showGround();
    std::vector<double> prepared;
    for (int round = 0; round < 50; ++round) {
        const auto content = std::make_shared<BarContent>();
        QElapsedTimer clock;
        clock.start();
        show(place, content);
        // Asked once to no avail, because the compositor must agree to the surface first.
        ASSERT_TRUE(awaitThat([&] { return content->asked > 1; }));
        prepared.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        panel->orderOut();
        turnFor(30);
    }
    std::ranges::sort(prepared);
    std::printf("show to first picture handed over: median %.3f ms, p95 %.3f ms\n", prepared[25],
                prepared[47]);
}

/// Resident memory of this process, in KiB.
long residentMemory() {
    QFile file(u"/proc/self/statm"_s);
    static_cast<void>(file.open(QIODevice::ReadOnly));
    return file.readAll().split(' ').at(1).toLong() * 4;
}

TEST_F(WaylandPanelTest, keepsItsSizeOverThousandsOfShows) {
    const auto descriptors = [] { return QDir(u"/proc/self/fd"_s).count(); };
    const auto showSome = [&](int count) {
        for (int round = 0; round < count; ++round) {
            const Size size{100.0 + round % 300, 60};
            show({100, 500, size.width, size.height}, std::make_shared<BarContent>(size));
            QCoreApplication::processEvents();
            connection->synchronize();
            QCoreApplication::processEvents();
            panel->orderOut();
        }
        connection->synchronize();
    };
    showSome(300);
    const auto memory = residentMemory();
    const auto open = descriptors();
    showSome(3000);
    EXPECT_EQ(descriptors(), open);
    std::printf("grown by %ld KiB over 3000 shows\n", residentMemory() - memory);
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer keeps freed memory back to find uses of it.
    std::printf("the limit on memory is not checked under AddressSanitizer\n");
#else
    EXPECT_LT(residentMemory() - memory, 2048);
#endif
}

} // namespace
} // namespace orvantile::platform::wayland
