#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace orvantile::platform {

/// Something that has been scheduled. Destroying it invalidates it.
class Scheduled {
public:
    Scheduled() = default;
    Scheduled(const Scheduled&) = delete;
    Scheduled& operator=(const Scheduled&) = delete;
    virtual ~Scheduled() = default;

    /// It will not run again. Harmless when it has run already.
    virtual void invalidate() = 0;
};

/// The main loop as a place to put work, and its clock. Main thread only.
class Scheduler {
public:
    using Work = std::function<void()>;

    Scheduler() = default;
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;
    virtual ~Scheduler() = default;

    /// Seconds on a clock that never jumps.
    [[nodiscard]] virtual double now() const = 0;

    /// Runs `work` in a later turn of the main loop, after everything that was put there before it.
    virtual void runLater(Work work) = 0;

    /// Runs `work` once, `seconds` from now; a negative or zero time means as soon as the loop turns.
    [[nodiscard]] virtual std::unique_ptr<Scheduled> runAfter(double seconds, Work work) = 0;

    /// The same, and also while one of the program's own menus or dialogs holds the main loop.
    [[nodiscard]] virtual std::unique_ptr<Scheduled> runOnMainQueueAfter(double seconds, Work work) {
        return runAfter(seconds, std::move(work));
    }

    /// Runs `work` before every screen refresh until it is invalidated.
    [[nodiscard]] virtual std::unique_ptr<Scheduled> runEveryFrame(Work work) = 0;
};

} // namespace orvantile::platform
