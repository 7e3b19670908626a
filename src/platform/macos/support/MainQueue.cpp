#include "platform/macos/support/MainQueue.h"

#include <cmath>
#include <dispatch/dispatch.h>
#include <memory>
#include <utility>

namespace orvantile::platform::macos {
namespace {

using Work = std::function<void()>;

/// Takes the work back from the queue. An exception would have to cross the queue's C code: it ends the
/// program.
void run(void* context) noexcept {
    const std::unique_ptr<const Work> work(static_cast<const Work*>(context));
    (*work)();
}

} // namespace

void runOnMainQueue(Work work) {
    auto context = std::make_unique<Work>(std::move(work));
    dispatch_async_f(dispatch_get_main_queue(), context.release(), &run);
}

void runOnMainQueueAfter(double seconds, Work work) {
    constexpr double longest = 365.0 * 24 * 3600;
    const auto nanoseconds = seconds > 0 && seconds < longest ? std::llround(seconds * NSEC_PER_SEC) : 0;
    auto context = std::make_unique<Work>(std::move(work));
    dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(),
                     context.release(), &run);
}

} // namespace orvantile::platform::macos
