#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/runtime/ClassTable.h"

#include <algorithm>
#include <utility>

using orvantile::test::desktop::state;

NSRunLoopMode const NSRunLoopCommonModes = @"kCFRunLoopCommonModes";

@interface NSTimer () {
@public
    void (^work)(NSTimer*);
    double interval;
    double due;
    bool repeating;
    bool scheduled;
}

@end

@implementation NSTimer

+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer*))block {
    NSTimer* timer = [[NSTimer alloc] init];
    timer->work = block;
    timer->interval = std::max(interval, 0.0001);
    timer->repeating = repeats;
    return timer;
}

+ (NSTimer*)scheduledTimerWithTimeInterval:(NSTimeInterval)interval
                                   repeats:(BOOL)repeats
                                     block:(void (^)(NSTimer*))block {
    NSTimer* timer = [self timerWithTimeInterval:interval repeats:repeats block:block];
    [timer schedule];
    return timer;
}

- (void)schedule {
    due = state().now + interval;
    state().timers.push_back(self);
}

- (void)invalidate {
    NSTimer* const keep = self;
    std::erase(state().timers, keep);
    keep->work = nil;
}

- (void)fire {
    // Invalidating the timer lets go of its block even while that runs.
    __unsafe_unretained void (^const running)(NSTimer*) = work;
    running(self);
}

@end

@implementation NSProcessInfo

@dynamic systemUptime;

+ (NSProcessInfo*)processInfo {
    static NSProcessInfo* const info = [[NSProcessInfo alloc] init];
    return info;
}

- (NSTimeInterval)systemUptime {
    return state().now;
}

@end

@implementation NSRunLoop

+ (NSRunLoop*)mainRunLoop {
    static NSRunLoop* const loop = [[NSRunLoop alloc] init];
    return loop;
}

- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode {
    [timer schedule];
}

@end

namespace orvantile::test::desktop {

void advance(double seconds) {
    const double end = state().now + seconds;
    while (true) {
        const Pool pool;
        const auto& timers = state().timers;
        const auto next = std::ranges::min_element(timers, {}, [](NSTimer* timer) { return timer->due; });
        if (next == timers.end() || (*next)->due > end) {
            break;
        }
        NSTimer* const timer = *next;
        state().now = timer->due;
        [timer fire];
        if (timer->repeating) {
            timer->due += timer->interval;
        } else {
            [timer invalidate];
        }
    }
    state().now = end;
}

std::size_t pendingTimers() {
    return state().timers.size();
}

} // namespace orvantile::test::desktop
