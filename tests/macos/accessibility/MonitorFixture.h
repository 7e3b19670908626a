#pragma once

#include "macos/accessibility/MainQueueScheduler.h"
#include "macos/axfake/FakeApplication.h"
#include "monitor/ShortcutMonitor.h"
#include "platform/macos/accessibility/MacAccessibilityClient.h"
#include "platform/null/NullPlatform.h"
#include "support/FakePlatform.h"

#include <gmock/gmock.h>

namespace orvantile::test {

struct Report {
    std::optional<QString> shortcut;
    QString title;

    friend bool operator==(const Report&, const Report&) = default;
};

/// The monitor on the accessibility layer of macOS, with two applications to go between.
class MonitorFixture : public ::testing::Test {
protected:
    MonitorFixture();
    ~MonitorFixture() override;

    void start() {
        workspace->frontmost = platform::RunningApplication{editorProcess};
        monitor->start();
    }

    static constexpr pid_t editorProcess = 7;
    static constexpr pid_t browserProcess = 8;
    static constexpr std::int64_t command = 0;

    AxFake fake;
    FakeApplication editor;
    FakeApplication browser;
    FakeWorkspace* workspace = nullptr; ///< owned by the platform
    std::unique_ptr<platform::Platform> platform;
    std::shared_ptr<ShortcutMonitor> monitor;
    std::vector<Report> reports;
};

} // namespace orvantile::test
