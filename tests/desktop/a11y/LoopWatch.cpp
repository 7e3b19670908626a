#include "desktop/a11y/LoopWatch.h"

#include <algorithm>
#include <ctime>

namespace orvantile::test {
namespace {

std::chrono::nanoseconds threadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

LoopWatch::LoopWatch() : lastWork(threadTime()), lastBeat(std::chrono::steady_clock::now()) {
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { beat(); });
    timer.start(1);
}

void LoopWatch::beat() {
    using std::chrono::duration_cast;
    using std::chrono::microseconds;
    const auto nowWork = threadTime();
    const auto nowBeat = std::chrono::steady_clock::now();
    work = std::max(work, duration_cast<microseconds>(nowWork - lastWork));
    gap = std::max(gap, duration_cast<microseconds>(nowBeat - lastBeat));
    lastWork = nowWork;
    lastBeat = nowBeat;
}

} // namespace orvantile::test
