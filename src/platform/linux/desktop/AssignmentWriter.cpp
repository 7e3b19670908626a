#include "platform/linux/desktop/AssignmentWriter.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <utility>

namespace orvantile::platform::desktop {

struct AssignmentWriter::Shared {
    Shared(Store store_, Milliseconds retryDelay_) : store(std::move(store_)), retryDelay(retryDelay_) {}

    /// On the worker thread.
    static void storePending(const std::shared_ptr<Shared>& shared,
                             const std::weak_ptr<WorkerThread>& worker) {
        std::unique_lock lock(shared->mutex);
        const auto changes = std::exchange(shared->pending, {});
        const auto last = shared->written;
        lock.unlock();
        const bool stored = shared->store(changes);
        lock.lock();
        shared->attempted = last;
        shared->attempt.notify_all();
        if (const auto thread = worker.lock(); thread && !stored && shared->written == last) {
            thread->schedule([shared, worker] { storePending(shared, worker); }, shared->retryDelay);
        }
    }

    /// False when it takes longer.
    bool waitForAttempt(Clock::duration time) {
        std::unique_lock lock(mutex);
        return attempt.wait_for(lock, time, [this] { return attempted == written; });
    }

    const Store store;
    const Milliseconds retryDelay;
    std::mutex mutex; ///< of what follows
    std::condition_variable attempt;
    Changes pending;
    std::uint64_t written = 0;   ///< assignments so far
    std::uint64_t attempted = 0; ///< of which the store has been tried
};

AssignmentWriter::AssignmentWriter(Store store, Milliseconds retryDelay)
    : shared(std::make_shared<Shared>(std::move(store), retryDelay)),
      worker(std::make_shared<WorkerThread>()) {}

AssignmentWriter::~AssignmentWriter() {
    synchronize();
}

void AssignmentWriter::synchronize() {
    shared->waitForAttempt(std::chrono::seconds(1));
}

void AssignmentWriter::write(const QByteArray& key, const QByteArray& text) {
    {
        const std::scoped_lock lock(shared->mutex);
        shared->pending.set(key, text);
        ++shared->written;
        worker->schedule(
            [shared = shared, worker = std::weak_ptr(worker)] { Shared::storePending(shared, worker); });
    }
    waitWithinAllowance();
}

void AssignmentWriter::waitWithinAllowance() {
    const auto start = Clock::now();
    if (start - windowStart > window) {
        windowStart = start;
        remaining = allowance;
    }
    if (remaining > Clock::duration::zero()) {
        shared->waitForAttempt(remaining);
        remaining -= std::min(remaining, Clock::now() - start);
    }
}

} // namespace orvantile::platform::desktop
