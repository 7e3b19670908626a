#pragma once

#include "platform/Launch.h"

namespace orvantile::platform::macos {

/// A launch as the system reports it. The system itself keeps to one copy and tells it of later launches.
class MacLaunch final : public Launch {
public:
    [[nodiscard]] bool isTakenOver() override { return false; }

    void onFinished(Scheduler& scheduler, std::function<void()> work) override;
    void onReopen(ReopenHandler handler) override;
};

} // namespace orvantile::platform::macos
