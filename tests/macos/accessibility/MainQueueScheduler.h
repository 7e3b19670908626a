#pragma once

#include "platform/Scheduler.h"
#include "platform/macos/support/MainQueue.h"

#include <utility>

namespace orvantile::test {

/// A scheduler of which only the main queue works.
class MainQueueScheduler final : public platform::Scheduler {
public:
    [[nodiscard]] double now() const override { return 0; }

    void runLater(Work work) override { platform::macos::runOnMainQueue(std::move(work)); }

    [[nodiscard]] std::unique_ptr<platform::Scheduled> runAfter(double, Work) override { return nullptr; }

    [[nodiscard]] std::unique_ptr<platform::Scheduled> runEveryFrame(Work) override { return nullptr; }
};

} // namespace orvantile::test
