#pragma once

#include <QTimer>
#include <chrono>

namespace orvantile::test {

/// Measures for how long the main loop is held by what runs in it: the longest processor time and the longest
/// wall time between two beats of a timer. Only the first is exact on a busy machine; the second betrays
/// whoever waits.
class LoopWatch {
public:
    LoopWatch();

    [[nodiscard]] std::chrono::microseconds longestWork() const { return work; }

    [[nodiscard]] std::chrono::microseconds longestGap() const { return gap; }

private:
    void beat();

    QTimer timer;
    std::chrono::nanoseconds lastWork{};
    std::chrono::steady_clock::time_point lastBeat;
    std::chrono::microseconds work{};
    std::chrono::microseconds gap{};
};

} // namespace orvantile::test
