#include "platform/linux/desktop/PanelFrames.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvantile::platform::desktop {

PanelFrames::PanelFrames(Scheduler& scheduler_, Present present_)
    : scheduler(scheduler_),
      show(std::move(present_)) {}

void PanelFrames::setContent(std::shared_ptr<const PanelContent> content_) {
    content = std::move(content_);
    entered = false;
    invalidate();
}

void PanelFrames::setAlpha(double alpha) {
    ramp = {.from = alpha, .to = alpha};
    invalidate();
}

void PanelFrames::animateAlpha(double alpha, double duration, std::function<void()> completion) {
    const double now = scheduler.now();
    ramp = {.from = alphaAt(now), .to = alpha, .start = now, .duration = std::max(duration, 0.0)};
    std::erase_if(completions, [](const auto& earlier) { return earlier.called; });
    if (completion) {
        auto& entry = completions.emplace_back();
        entry.timer = scheduler.runAfter(ramp.duration, [&entry, completion = std::move(completion)] {
            entry.called = true;
            completion();
        });
    }
    present();
}

void PanelFrames::setVisible(bool visible_) {
    visible = visible_;
    if (visible) {
        invalidate();
    } else {
        ticker.reset();
        soon.reset();
    }
}

void PanelFrames::invalidate() {
    if (visible && !soon) {
        soon = scheduler.runAfter(0, [this] { present(); });
    }
}

void PanelFrames::present() {
    soon.reset();
    if (!visible || !content) {
        return;
    }
    const double now = scheduler.now();
    if (!std::exchange(entered, true)) {
        entranceStart = now;
    }
    const double seen = std::max(now + lead, entranceStart + opening);
    auto frame = content->frameAt(seen - entranceStart);
    const double alpha = alphaAt(seen);
    const bool moving = isFading(seen) || (!frame.settled && alpha > 0);
    frame.opacity = std::clamp(frame.opacity, 0.0, 1.0) * alpha;
    tick(moving);
    show(frame);
}

void PanelFrames::tick(bool moving) {
    if (!moving) {
        ticker.reset();
    } else if (!ticker) {
        ticker = scheduler.runEveryFrame([this] { present(); });
    }
}

double PanelFrames::alphaAt(double time) const {
    if (!isFading(time)) {
        return ramp.to;
    }
    return std::lerp(ramp.from, ramp.to, std::max(time - ramp.start, 0.0) / ramp.duration);
}

bool PanelFrames::isFading(double time) const {
    return time < ramp.start + ramp.duration;
}

} // namespace orvantile::platform::desktop
