#pragma once

#include "platform/Scheduler.h"

#include <QObject>
#include <chrono>

namespace orvantile::platform::desktop {

/// The toolkit's main loop.
class QtScheduler final : public Scheduler {
public:
    [[nodiscard]] double now() const override;
    void runLater(Work work) override;
    [[nodiscard]] std::unique_ptr<Scheduled> runAfter(double seconds, Work work) override;
    [[nodiscard]] std::unique_ptr<Scheduled> runEveryFrame(Work work) override;

private:
    QObject context; ///< work that is still pending ends with it
};

} // namespace orvantile::platform::desktop
