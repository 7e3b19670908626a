#pragma once

#include "platform/linux/desktop/Changes.h"
#include "platform/linux/desktop/WorkerThread.h"

#include <QByteArray>
#include <chrono>
#include <functional>
#include <memory>

namespace orvantile::platform::desktop {

/// Stores assignments on a worker thread and waits for that only as long as nobody notices. While the store
/// is busy assignments gather, and are then stored together. Used from one thread.
class AssignmentWriter {
public:
    using Milliseconds = std::chrono::milliseconds;

    /// Blocking; false when it failed, which obliges it to store these changes together with the next. Must
    /// own what it uses.
    using Store = std::function<bool(const Changes&)>;

    /// What all waiting within a `window` adds up to at most: a turn of the main loop stays below 5 ms.
    static constexpr Milliseconds allowance{3};
    static constexpr Milliseconds window{20};

    /// Until a store that failed is tried again without a further assignment.
    static constexpr Milliseconds defaultRetryDelay{30000};

    explicit AssignmentWriter(Store store, Milliseconds retryDelay = defaultRetryDelay);
    AssignmentWriter(const AssignmentWriter&) = delete;
    AssignmentWriter& operator=(const AssignmentWriter&) = delete;

    /// Synchronizes.
    ~AssignmentWriter();

    void write(const QByteArray& key, const QByteArray& text);

    /// Waits at most a second until all assignments have been stored, or tried in vain.
    void synchronize();

private:
    using Clock = std::chrono::steady_clock;
    struct Shared;

    void waitWithinAllowance();

    std::shared_ptr<Shared> shared;
    std::shared_ptr<WorkerThread> worker;
    Clock::time_point windowStart;
    Clock::duration remaining{allowance};
};

} // namespace orvantile::platform::desktop
