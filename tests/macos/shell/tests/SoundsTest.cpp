#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/desktop/MacSounds.h"

namespace orvantile::test {
namespace {

using platform::macos::MacSounds;
using ::testing::ElementsAre;

using MacSoundsTest = ShellTest;

TEST_F(MacSoundsTest, playsTheSystemsSoundOfThatName) {
    MacSounds().play(QStringLiteral("Tink"));

    EXPECT_THAT(calls(), ElementsAre("[NSSound soundNamed:\"Tink\"]", "[NSSound play]"));
}

TEST_F(MacSoundsTest, playsNothingForANameThatTheSystemDoesNotKnow) {
    MacSounds().play(QStringLiteral("Basso Profondo"));

    EXPECT_THAT(calls(), ElementsAre("[NSSound soundNamed:\"Basso Profondo\"]"));
}

} // namespace
} // namespace orvantile::test
