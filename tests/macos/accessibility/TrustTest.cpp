#include "macos/axfake/AxFake.h"
#include "platform/macos/accessibility/MacAccessibilityClient.h"

#include <gmock/gmock.h>

namespace orvantile::platform::macos {
namespace {

using ::testing::ElementsAre;

class TrustTest : public ::testing::Test {
protected:
    test::AxFake fake;
    MacAccessibilityClient client;
};

TEST_F(TrustTest, isReadAnewEachTime) {
    EXPECT_TRUE(client.isProcessTrusted());
    fake.trusted = false;
    EXPECT_FALSE(client.isProcessTrusted());
    EXPECT_THAT(fake.calls, ElementsAre("AXIsProcessTrusted", "AXIsProcessTrusted"));
}

TEST_F(TrustTest, promptIsTheOnlyOption) {
    fake.trusted = false;
    client.promptForTrust();
    EXPECT_THAT(fake.calls, ElementsAre("AXIsProcessTrustedWithOptions {AXTrustedCheckOptionPrompt=true}"));
    EXPECT_EQ(fake.liveObjects(), 0);
}

} // namespace
} // namespace orvantile::platform::macos
