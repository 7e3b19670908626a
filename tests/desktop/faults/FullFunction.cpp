#include "desktop/faults/FullFunction.h"

#include "support/QtPrinting.h"

#include <chrono>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;

/// Generous on a busy machine; whatever waits for a part that hangs would take seconds.
constexpr std::chrono::milliseconds soon{500};

} // namespace

void expectFullFunction(Stage& stage) {
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
    const auto pressed = std::chrono::steady_clock::now();
    stage.keys().press(u"Ctrl+I"_s);
    auto hud = stage.huds().awaitNext();
    while (hud && hud->label == mousepad.fenceLabel) {
        hud = stage.huds().awaitNext(); // a fence that was pressed before the first was named
    }
    ASSERT_TRUE(hud);
    EXPECT_EQ(hud->label, u"⌃I  Increase Indent"_s);
    EXPECT_LT(hud->time - pressed, soon);
    EXPECT_TRUE(stage.huds().awaitHidden());
    EXPECT_TRUE(stage.orvantile().isRunning());
}

} // namespace orvantile::test
