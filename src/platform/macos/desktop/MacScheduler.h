#pragma once

#include "platform/Scheduler.h"

namespace orvantile::platform::macos {

/// The main queue, and the timers of the main run loop.
class MacScheduler final : public Scheduler {
public:
    [[nodiscard]] double now() const override;
    void runLater(Work work) override;
    [[nodiscard]] std::unique_ptr<Scheduled> runAfter(double seconds, Work work) override;
    [[nodiscard]] std::unique_ptr<Scheduled> runOnMainQueueAfter(double seconds, Work work) override;
    [[nodiscard]] std::unique_ptr<Scheduled> runEveryFrame(Work work) override;
};

} // namespace orvantile::platform::macos
