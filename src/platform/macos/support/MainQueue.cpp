#include "platform/macos/support/MainQueue.h"

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

} // namespace orvantile::platform::macos
