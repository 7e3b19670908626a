#include "platform/macos/panel/Entrance.h"

#include <utility>

namespace orvantile::platform::macos {

Entrance::Entrance(Scheduler& scheduler_, Show show_) : scheduler(scheduler_), show(std::move(show_)) {}

void Entrance::begin(std::shared_ptr<const PanelContent> content_) {
    content = std::move(content_);
    start = scheduler.now();
    ticker = scheduler.runEveryFrame([this] { step(); });
    step();
}

void Entrance::stop() {
    ticker.reset();
    content.reset();
}

void Entrance::step() {
    const auto frame = content->frameAt(scheduler.now() - start);
    show(frame);
    if (frame.settled) {
        ticker.reset();
    }
}

} // namespace orvantile::platform::macos
