#include "platform/macos/application/MacLaunch.h"

#include "platform/macos/application/MacApplication.h"

#include <utility>

namespace orvantile::platform::macos {

void MacLaunch::onFinished(Scheduler& scheduler, std::function<void()> work) {
    if (MacApplication::hasLaunched()) {
        scheduler.runLater(std::move(work)); // the toolkit has turned the loop before
    } else {
        MacApplication::onLaunched(std::move(work));
    }
}

void MacLaunch::onReopen(ReopenHandler handler) {
    MacApplication::onReopened(std::move(handler));
}

} // namespace orvantile::platform::macos
