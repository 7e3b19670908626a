// The panel on a compositor that offers the least that a panel needs: no exact scales, no details of outputs.

#include "support/desktop/MainLoop.h"
#include "unit/wayland/Peers.h"

#include <gmock/gmock.h>

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;

/// A picture of one colour.
class PlainContent final : public PanelContent {
public:
    [[nodiscard]] Size fittingSize() const override { return {200, 60}; }

    [[nodiscard]] QString title() const override { return QStringLiteral("plain"); }

    void prepare(const Rect& frame, double scale) override {
        picture = QImage(static_cast<int>(frame.width * scale), static_cast<int>(frame.height * scale),
                         QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::red);
    }

    [[nodiscard]] PanelFrame frameAt(double) const override {
        return {.image = picture, .scale = 1, .opacity = 1, .settled = true, .origin = {}};
    }

private:
    QImage picture;
};

class PlainCompositorTest : public ::testing::Test {
protected:
    using PanelState = test::FakeCompositor::Panel;

    void show() {
        peers = std::make_unique<Peers>(compositor);
        panel = peers->panels.create({.size = {200, 60}});
        panel->setContent(std::make_shared<PlainContent>());
        panel->setFrame({100, 100, 200, 60}, true);
        panel->orderFrontRegardless();
    }

    /// Lets time pass and messages arrive until nothing more is to come.
    [[nodiscard]] bool awaitRest() {
        return awaitThat([this] {
            peers->scheduler.advance(test::VirtualScheduler::frame);
            peers->connection->synchronize();
            peers->connection->flush(); // what came of what has arrived
            return peers->scheduler.pending() == 0;
        });
    }

    [[nodiscard]] bool awaitPanel(const std::function<bool(const PanelState&)>& wanted) {
        return awaitThat([&] {
            peers->scheduler.advance(test::VirtualScheduler::frame);
            const auto state = compositor.panel();
            return state && wanted(*state);
        });
    }

    /// Waits for a picture of 200 × 60 points at that scale.
    [[nodiscard]] bool awaitScale(int scale) {
        return awaitPanel([scale](const PanelState& state) {
            return state.bufferScale == scale && state.picture.size() == QSize(200, 60) * scale &&
                   state.picture.pixelColor(100, 30) == QColor(Qt::red);
        });
    }

    test::FakeCompositor compositor;
    std::unique_ptr<Peers> peers;
    std::shared_ptr<Panel> panel;
};

TEST_F(PlainCompositorTest, picturesHaveTheWholeScaleOfTheOutput) {
    compositor.setScale(2);
    show();
    EXPECT_TRUE(awaitScale(2));
    EXPECT_EQ(peers->screens.screens().front().frame.width, 640);
}

TEST_F(PlainCompositorTest, picturesFollowTheScaleWhileThePanelIsUp) {
    show();
    ASSERT_TRUE(awaitScale(1));
    compositor.setScale(3);
    EXPECT_TRUE(awaitScale(3));
    compositor.setScale(1);
    EXPECT_TRUE(awaitScale(1));
    EXPECT_TRUE(peers->connection->isOpen());
}

TEST_F(PlainCompositorTest, aPanelThatIsClosedComesBackWhileItIsWanted) {
    show();
    ASSERT_TRUE(awaitScale(1));
    const int number = compositor.panel()->number;
    compositor.closePanels();
    EXPECT_TRUE(awaitPanel(
        [=](const PanelState& state) { return state.number > number && !state.picture.isNull(); }));
    panel->orderOut();
    EXPECT_TRUE(awaitThat([this] { return !compositor.panel(); }));
}

TEST_F(PlainCompositorTest, aPanelThatIsRefusedIsAskedForOnceForEachLabel) {
    compositor.refusePanels();
    show();
    ASSERT_TRUE(awaitRest());
    EXPECT_TRUE(awaitThat([this] { return !compositor.panel(); }));
    EXPECT_EQ(compositor.surfaces(), 1) << "it is not asked for again and again";
    panel->orderOut();
    panel->setFrame({100, 100, 200, 60}, true);
    panel->orderFrontRegardless();
    ASSERT_TRUE(awaitRest());
    EXPECT_TRUE(awaitThat([this] { return !compositor.panel(); }));
    EXPECT_EQ(compositor.surfaces(), 2);
    EXPECT_TRUE(peers->connection->isOpen());
}

} // namespace
} // namespace orvantile::platform::wayland
