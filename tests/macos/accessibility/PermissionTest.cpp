// Where the program asks for the permission, on the accessibility layer of macOS.

#include "app/AppDelegate.h"
#include "macos/axfake/AxFake.h"
#include "platform/macos/accessibility/MacAccessibilityClient.h"
#include "preferences/PermissionRow.h"
#include "support/FakePlatform.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto asks = "AXIsProcessTrusted";
constexpr auto prompts = "AXIsProcessTrustedWithOptions {AXTrustedCheckOptionPrompt=true}";

/// Fakes of everything but the accessibility layer. The program's shared instances live as long as the
/// process, and so does the platform under them.
FakePlatform& processPlatform() {
    static auto& fakes = []() -> FakePlatform& {
        auto made = std::make_unique<FakePlatform>();
        made->accessibility = nullptr;
        made->platform().accessibility = std::make_unique<platform::macos::MacAccessibilityClient>();
        return *made.release();
    }();
    return fakes;
}

class NoWindow final : public PresentableWindow {
public:
    void present() override {}
};

class PermissionTest : public ::testing::Test {
protected:
    PermissionTest() { fakes.log->clear(); }

    /// What a launch asks of the system about trust, and after what.
    std::vector<std::string> launch() {
        const auto delegate =
            std::make_shared<AppDelegate>(fakes.platform(), [] { return std::make_unique<NoWindow>(); });
        fakes.workspace->frontmost = platform::RunningApplication{7};
        delegate->applicationDidFinishLaunching();
        const auto source = std::ranges::find(fake.calls, "CFRunLoopAddSource 7 main kCFRunLoopDefaultMode");
        EXPECT_NE(source, fake.calls.end()) << "the monitor starts first";
        return {source == fake.calls.end() ? source : std::next(source), fake.calls.end()};
    }

    FakePlatform& fakes = processPlatform();
    AxFake fake;
};

TEST_F(PermissionTest, launchPromptsOnceTheMonitorHasStarted) {
    fake.trusted = false;
    EXPECT_THAT(launch(), ElementsAre(asks, prompts));
}

TEST_F(PermissionTest, launchOfATrustedProgramPromptsForNothing) {
    EXPECT_THAT(launch(), ElementsAre(asks));
}

TEST_F(PermissionTest, buttonPromptsAndReadsAgainHalfASecondLater) {
    fake.trusted = false;
    PermissionRow row(fakes.platform());
    EXPECT_THAT(fake.calls, ElementsAre(asks));
    auto& button = *row.findChild<QPushButton*>();
    button.click();
    EXPECT_THAT(fake.calls, ElementsAre(asks, prompts));
    EXPECT_THAT(*fakes.log, Contains(u"workspace.openAccessibilitySettings"_s));
    fakes.scheduler->advance(0.499);
    EXPECT_THAT(fake.calls, ElementsAre(asks, prompts));
    fake.trusted = true;
    fakes.scheduler->advance(0.002);
    EXPECT_THAT(fake.calls, ElementsAre(asks, prompts, asks));

    fake.calls.clear();
    fakes.log->clear();
    button.click();
    fakes.scheduler->advance(0.501);
    EXPECT_THAT(fake.calls, ElementsAre(asks)) << "a trusted program has nothing to prompt for";
    EXPECT_THAT(*fakes.log, IsEmpty());
}

} // namespace
} // namespace orvantile::test
