#include "platform/linux/x11/StartupNotice.h"

#include <gmock/gmock.h>

namespace orvantile::platform::x11 {
namespace {

TEST(StartupNotice, namesTheLaunchThatIsOver) {
    EXPECT_EQ(endOfStartup("panel-1-host_TIME5"), "remove: ID=\"panel-1-host_TIME5\"");
}

TEST(StartupNotice, quotesWhatWouldEndTheName) {
    EXPECT_EQ(endOfStartup(R"(a" NAME=\b)"), R"(remove: ID="a\" NAME=\\b")");
}

} // namespace
} // namespace orvantile::platform::x11
