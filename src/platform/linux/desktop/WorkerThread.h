#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace orvantile::platform::desktop {

/// A thread for work that may block, started when there is some. It holds at most one piece of work that has
/// not begun. Its owner never waits for it: work that blocks for ever is left behind when the owner goes, so
/// work must own what it uses.
class WorkerThread {
public:
    using Work = std::function<void()>;

    WorkerThread();
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;

    /// Drops work that has not begun.
    ~WorkerThread();

    /// Runs `work` after `delay`, in place of what was scheduled before and has not begun. Any thread.
    void schedule(Work work, std::chrono::milliseconds delay = std::chrono::milliseconds(0));

private:
    struct State;

    std::shared_ptr<State> state;
    std::thread thread;
};

} // namespace orvantile::platform::desktop
