#pragma once

#include "platform/Scheduler.h"

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace orvantile::test {

/// A main loop that turns only when it is told to, on a clock that only it moves.
class VirtualScheduler final : public platform::Scheduler {
public:
    [[nodiscard]] double now() const override { return time; }

    void runLater(Work work) override;
    [[nodiscard]] std::unique_ptr<platform::Scheduled> runAfter(double seconds, Work work) override;
    [[nodiscard]] std::unique_ptr<platform::Scheduled> runEveryFrame(Work work) override;

    /// Runs what is due now, and what that schedules for now.
    void turn() { advance(0); }

    /// Moves the clock by `seconds`, running everything at its time and in order.
    void advance(double seconds);

    /// How many timers and frame callbacks are waiting.
    [[nodiscard]] int pending() const;

    /// What runs every frame, 60 times a second.
    static constexpr double frame = 1.0 / 60;

private:
    struct Entry {
        Work work;
        double interval = 0; ///< above 0 for what repeats
        bool valid = true;
        bool posted = false;
    };

    class Handle;

    std::shared_ptr<Entry> schedule(double at, Entry entry);

    double time = 0;
    std::uint64_t sequence = 0;
    std::map<std::pair<double, std::uint64_t>, std::shared_ptr<Entry>> entries;
};

} // namespace orvantile::test
