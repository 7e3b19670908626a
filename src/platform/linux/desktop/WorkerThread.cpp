#include "platform/linux/desktop/WorkerThread.h"

#include <condition_variable>
#include <csignal>
#include <mutex>
#include <utility>

namespace orvantile::platform::desktop {

struct WorkerThread::State {
    using Clock = std::chrono::steady_clock;

    void run() {
        std::unique_lock lock(mutex);
        while (!stopping) {
            if (!scheduled) {
                changed.wait(lock);
            } else if (Clock::now() < due) {
                changed.wait_until(lock, due);
            } else {
                auto work = std::exchange(scheduled, nullptr);
                working = true;
                lock.unlock();
                work();
                work = nullptr;
                lock.lock();
                working = false;
            }
        }
    }

    std::mutex mutex;
    std::condition_variable changed;
    Work scheduled;
    Clock::time_point due;
    bool started = false;
    bool working = false;
    bool stopping = false;
};

WorkerThread::WorkerThread() : state(std::make_shared<State>()) {}

WorkerThread::~WorkerThread() {
    bool working = false;
    {
        const std::scoped_lock lock(state->mutex);
        state->stopping = true;
        state->scheduled = nullptr;
        working = state->working;
    }
    state->changed.notify_all();
    if (thread.joinable()) {
        if (working) {
            thread.detach();
        } else {
            thread.join();
        }
    }
}

void WorkerThread::schedule(Work work, std::chrono::milliseconds delay) {
    {
        const std::scoped_lock lock(state->mutex);
        state->scheduled = std::move(work);
        state->due = State::Clock::now() + delay;
        if (!std::exchange(state->started, true)) {
            // Signals are the main thread's; one for a file that grew too long must not end the program.
            sigset_t all;
            sigset_t before;
            sigfillset(&all);
            pthread_sigmask(SIG_BLOCK, &all, &before);
            thread = std::thread([state = state] { state->run(); });
            pthread_sigmask(SIG_SETMASK, &before, nullptr);
        }
    }
    state->changed.notify_all();
}

} // namespace orvantile::platform::desktop
