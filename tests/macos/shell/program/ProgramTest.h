#pragma once

#include "macos/axfake/AxFake.h"
#include "macos/axfake/FakeApplication.h"
#include "macos/shell/tests/ShellTest.h"
#include "platform/Startup.h"

#include <algorithm>
#include <memory>
#include <string_view>

namespace orvantile::test {

/// The whole platform as the program makes it, in force, on fakes.
class ProgramTest : public ShellTest {
protected:
    ProgramTest() {
        EXPECT_EQ(platform::prepareProcess(), std::nullopt);
        platform::Platform::install(platform::makePlatform());
        forgetCalls();
    }

    ~ProgramTest() override { platform::Platform::install(nullptr); }

    /// What still waits in the main queue is not lost but done.
    void TearDown() override {
        ax.advance(10);
        while (ax.turnMainQueue() > 0) {
        }
    }

    /// The calls to any of the receivers.
    [[nodiscard]] static std::vector<std::string> callsTo(const std::vector<std::string_view>& receivers) {
        std::vector<std::string> result;
        std::ranges::copy_if(calls(), std::back_inserter(result), [&](const std::string& call) {
            const std::string_view receiver(call.data() + 1, call.find(' ') - 1);
            return std::ranges::find(receivers, receiver) != receivers.end();
        });
        return result;
    }

    AxFake ax;
};

} // namespace orvantile::test
