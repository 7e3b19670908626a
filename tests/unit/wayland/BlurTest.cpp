// The blur behind the heads-up display, on a compositor that offers one or another and changes its mind.

#include "hud/HUDHostingView.h"
#include "support/desktop/MainLoop.h"
#include "unit/wayland/Peers.h"

#include <gmock/gmock.h>

namespace orvantile::platform::wayland {
namespace {

using test::awaitThat;
using Qt::StringLiterals::operator""_s;

constexpr std::uint32_t blur = EXT_BACKGROUND_EFFECT_MANAGER_V1_CAPABILITY_BLUR;

class BlurTest : public ::testing::Test {
protected:
    using PanelState = test::FakeCompositor::Panel;

    /// Shows a label of glass and waits until it rests.
    void show() {
        peers = std::make_unique<Peers>(compositor);
        panel = peers->panels.create({.size = {200, 60}});
        auto view = std::make_shared<HUDHostingView>(HUDView{.text = u"⌃S  Save"_s, .popAnimation = false},
                                                     peers->backdrop, peers->screens);
        const auto size = view->fittingSize();
        panel->setContent(view);
        panel->setFrame({100, 100, size.width, size.height}, true);
        panel->orderFrontRegardless();
        const auto capsule = HUDView{.text = u"⌃S  Save"_s}.capsule().toAlignedRect();
        expected = capsule;
        ASSERT_TRUE(awaitRest());
        ASSERT_TRUE(compositor.panel() && !compositor.panel()->picture.isNull());
    }

    /// Waits until the compositor has everything and nothing more is to come.
    [[nodiscard]] bool awaitRest() {
        return awaitThat([&] {
            peers->scheduler.advance(test::VirtualScheduler::frame);
            peers->connection->synchronize();
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

    /// Whether the region is the capsule: as large, and without its corners.
    [[nodiscard]] bool isCapsule(const QRegion& region) const {
        return region.boundingRect() == expected && !region.contains(expected.topLeft()) &&
               region.contains(expected.center());
    }

    [[nodiscard]] bool awaitEffect() {
        return awaitPanel([this](const PanelState& state) {
            return isCapsule(state.effectBlur) && state.kdeBlur.isEmpty();
        });
    }

    [[nodiscard]] bool awaitKde() {
        return awaitPanel([this](const PanelState& state) {
            return isCapsule(state.kdeBlur) && state.effectBlur.isEmpty();
        });
    }

    [[nodiscard]] bool awaitNone() {
        return awaitPanel(
            [](const PanelState& state) { return state.kdeBlur.isEmpty() && state.effectBlur.isEmpty(); });
    }

    [[nodiscard]] bool awaitOtherPicture(const QImage& than) {
        return awaitPanel([&](const PanelState& state) { return state.picture != than; });
    }

    test::FakeCompositor compositor;
    std::unique_ptr<Peers> peers;
    std::shared_ptr<Panel> panel;
    QRect expected;
};

TEST_F(BlurTest, isNotAskedForWhereNobodyOffersIt) {
    show();
    EXPECT_TRUE(awaitNone());
    EXPECT_FALSE(peers->globals.blur.stands());
}

TEST_F(BlurTest, isTheCapsuleByTheNewerProtocol) {
    compositor.offerEffects(blur);
    show();
    EXPECT_TRUE(awaitEffect());
}

TEST_F(BlurTest, isTheCapsuleByKWinsProtocol) {
    compositor.offerKdeBlur();
    show();
    EXPECT_TRUE(awaitKde());
}

TEST_F(BlurTest, isAskedForOnceWhereBothAreOffered) {
    compositor.offerKdeBlur();
    compositor.offerEffects(blur);
    show();
    EXPECT_TRUE(awaitEffect());
}

TEST_F(BlurTest, isKWinsWhereTheNewerProtocolCannotBlur) {
    compositor.offerEffects(0);
    compositor.offerKdeBlur();
    show();
    EXPECT_TRUE(awaitKde());
}

TEST_F(BlurTest, followsTheCapabilitiesWhileTheHudIsUp) {
    compositor.offerEffects(blur);
    show();
    ASSERT_TRUE(awaitEffect());
    const auto glass = compositor.panel()->picture;
    compositor.setCapabilities(0);
    EXPECT_TRUE(awaitNone());
    EXPECT_TRUE(awaitOtherPicture(glass)) << "it looks otherwise without";
    compositor.setCapabilities(blur);
    EXPECT_TRUE(awaitEffect());
    EXPECT_TRUE(awaitPanel([&](const PanelState& state) { return state.picture == glass; }));
    EXPECT_TRUE(peers->connection->isOpen());
}

TEST_F(BlurTest, followsKWinsEffectWhileTheHudIsUp) {
    show();
    const auto plain = compositor.panel()->picture;
    compositor.offerKdeBlur();
    EXPECT_TRUE(awaitKde());
    EXPECT_TRUE(awaitOtherPicture(plain));
    compositor.withdrawKdeBlur();
    // What KWin was asked for stays with a surface that nobody can take it back from; without its effect
    // nothing comes of it.
    EXPECT_TRUE(awaitPanel([&](const PanelState& state) { return state.picture == plain; }));
    EXPECT_FALSE(peers->globals.blur.stands());
    compositor.offerKdeBlur();
    EXPECT_TRUE(awaitKde());
    EXPECT_TRUE(awaitOtherPicture(plain));
    EXPECT_TRUE(peers->connection->isOpen());
}

TEST_F(BlurTest, changesFromOneProtocolToTheOther) {
    compositor.offerKdeBlur();
    show();
    ASSERT_TRUE(awaitKde());
    compositor.offerEffects(blur);
    EXPECT_TRUE(awaitEffect());
    compositor.withdrawEffects();
    EXPECT_TRUE(awaitKde());
    EXPECT_TRUE(peers->connection->isOpen());
}

TEST_F(BlurTest, endsWithTheFadeAndComesWithTheNextLabel) {
    compositor.offerEffects(blur);
    show();
    ASSERT_TRUE(awaitEffect());
    panel->setAlpha(0);
    EXPECT_TRUE(awaitNone());
    panel->setAlpha(1);
    EXPECT_TRUE(awaitEffect());
    panel->orderOut();
    EXPECT_TRUE(awaitThat([this] { return !compositor.panel(); }));
    panel->orderFrontRegardless();
    EXPECT_TRUE(awaitEffect());
    EXPECT_TRUE(peers->connection->isOpen());
}

TEST_F(BlurTest, losesNothingWhenTheOfferChangesWhileNoHudIsUp) {
    show();
    panel->orderOut();
    ASSERT_TRUE(awaitThat([this] { return !compositor.panel(); }));
    compositor.offerKdeBlur();
    ASSERT_TRUE(awaitThat([this] { return peers->globals.blur.stands(); }));
    panel->orderFrontRegardless();
    EXPECT_TRUE(awaitKde());
}

} // namespace
} // namespace orvantile::platform::wayland
