#pragma once

#include "macos/shell/fakes/Desktop.h"
#include "macos/shell/recording/CallRecorder.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace orvantile::test {

/// A fresh desktop of fakes for each test.
class ShellTest : public ::testing::Test {
protected:
    ShellTest() { desktop::reset(); }

    [[nodiscard]] static const std::vector<std::string>& calls() { return CallRecorder::shared().calls(); }

    static void forgetCalls() { CallRecorder::shared().clear(); }

private:
    desktop::Pool pool;
};

} // namespace orvantile::test
