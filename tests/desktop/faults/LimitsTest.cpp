// Limits that the system sets the program.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/time.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;

#ifdef __SANITIZE_ADDRESS__
constexpr bool sanitized = true;
#else
constexpr bool sanitized = false;
#endif

void limit(pid_t process, __rlimit_resource what, rlim_t most) {
    const rlimit value{most, most};
    ASSERT_EQ(prlimit(process, what, &value, nullptr), 0);
}

/// What the process has reserved by now, in bytes.
rlim_t addressSpace(pid_t process) {
    std::ifstream statistics("/proc/" + std::to_string(process) + "/statm");
    rlim_t pages = 0;
    statistics >> pages;
    return pages * static_cast<rlim_t>(getpagesize());
}

rlim_t highestDescriptor(pid_t process) {
    rlim_t highest = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/fd")) {
        highest = std::max<rlim_t>(highest, std::stoul(entry.path().filename().string()));
    }
    return highest;
}

TEST(LimitsTest, worksWithSixtyFourFileDescriptors) {
    Stage stage;
    const auto editor = stage.start(mousepad);
    stage.startOrvantile({u"prlimit"_s, u"--nofile=64"_s});
    stage.awaitCommandsOf(mousepad);
    stage.start(geany);
    EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre());
    stage.windows().activate(editor.handle);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
}

TEST(LimitsTest, goesOnWhereItGetsNoFurtherFileDescriptors) {
    Stage stage;
    const auto editor = stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    const auto process = stage.orvantile().processIdentifier();
    limit(process, RLIMIT_NOFILE, highestDescriptor(process) + 1);
    EXPECT_EQ(stage.fire(u"Ctrl+I"_s), u"⌃I  Increase Indent"_s);
    stage.start(geany);
    EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre());
    stage.windows().activate(editor.handle);
    EXPECT_EQ(stage.fire(u"Ctrl+I"_s), u"⌃I  Increase Indent"_s);
    EXPECT_TRUE(stage.orvantile().isRunning());
}

TEST(LimitsTest, worksInLittleMoreMemoryThanItHas) {
    if (sanitized) {
        GTEST_SKIP() << "the sanitizer reserves terabytes of addresses";
    }
    Stage stage;
    const auto editor = stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    constexpr rlim_t little = 16U << 20U;
    const auto process = stage.orvantile().processIdentifier();
    limit(process, RLIMIT_AS, addressSpace(process) + little);
    stage.start(geany);
    EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre());
    stage.windows().activate(editor.handle);
    EXPECT_EQ(stage.fire(u"Ctrl+I"_s), u"⌃I  Increase Indent"_s);
    EXPECT_TRUE(stage.orvantile().isRunning());
}

} // namespace
} // namespace orvantile::test
