#include "platform/macos/desktop/MacScheduler.h"

#include "platform/macos/support/MainQueue.h"

#import <AppKit/AppKit.h>
#include <algorithm>
#include <utility>

namespace orvantile::platform::macos {
namespace {

using TimerBlock = void (^)(NSTimer*);

class TimerScheduled final : public Scheduled {
public:
    explicit TimerScheduled(NSTimer* timer_) : timer(timer_) {}

    TimerScheduled(const TimerScheduled&) = delete;
    TimerScheduled& operator=(const TimerScheduled&) = delete;

    ~TimerScheduled() override { TimerScheduled::invalidate(); }

    void invalidate() override {
        [timer invalidate];
        timer = nil;
    }

private:
    NSTimer* timer;
};

/// Work in the queue, which cannot be taken back: it runs only while this holds it.
class QueuedScheduled final : public Scheduled {
public:
    explicit QueuedScheduled(Scheduler::Work work_)
        : work(std::make_shared<const Scheduler::Work>(std::move(work_))) {}

    [[nodiscard]] Scheduler::Work runningIt() const {
        return [weak = std::weak_ptr(work)] {
            if (const auto waiting = weak.lock()) {
                (*waiting)();
            }
        };
    }

    void invalidate() override { work.reset(); }

private:
    std::shared_ptr<const Scheduler::Work> work;
};

TimerBlock blockFor(Scheduler::Work work) {
    const auto shared = std::make_shared<Scheduler::Work>(std::move(work));
    return ^(NSTimer*) {
      const auto running = shared; // the block goes when the timer is invalidated by what it runs
      (*running)();
    };
}

/// The time from one refresh of the main screen to the next.
double frameInterval() {
    constexpr NSInteger slowest = 30;
    constexpr NSInteger fastest = 240;
    NSScreen* screen = NSScreen.mainScreen;
    const NSInteger rate = screen != nil ? screen.maximumFramesPerSecond : 60;
    return 1.0 / static_cast<double>(std::clamp(rate, slowest, fastest));
}

} // namespace

double MacScheduler::now() const {
    return NSProcessInfo.processInfo.systemUptime;
}

void MacScheduler::runLater(Work work) {
    runOnMainQueue(std::move(work));
}

std::unique_ptr<Scheduled> MacScheduler::runAfter(double seconds, Work work) {
    return std::make_unique<TimerScheduled>(
        [NSTimer scheduledTimerWithTimeInterval:seconds repeats:NO block:blockFor(std::move(work))]);
}

std::unique_ptr<Scheduled> MacScheduler::runOnMainQueueAfter(double seconds, Work work) {
    auto queued = std::make_unique<QueuedScheduled>(std::move(work));
    macos::runOnMainQueueAfter(seconds, queued->runningIt());
    return queued;
}

std::unique_ptr<Scheduled> MacScheduler::runEveryFrame(Work work) {
    NSTimer* timer = [NSTimer timerWithTimeInterval:frameInterval()
                                            repeats:YES
                                              block:blockFor(std::move(work))];
    // An open menu of this program does not hold up a HUD that is coming up.
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
    return std::make_unique<TimerScheduled>(timer);
}

} // namespace orvantile::platform::macos
