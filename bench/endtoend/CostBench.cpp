// What the program costs: the application it observes, its own idle wakeups, its memory.

#include "endtoend/EditorDesktop.h"
#include "support/Samples.h"
#include "support/desktop/ProcessCost.h"

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using test::cpuSeconds;
using test::memory;
using test::wakeups;
using test::wokenBetween;

/// CPU time of the editor for 500 characters, typed at the pace of a very fast hand, in milliseconds.
double typingCost(EditorDesktop& desktop) {
    const double before = cpuSeconds(desktop.editorProcess());
    for (int i = 0; i < 500; ++i) {
        desktop.keys().press(i % 50 == 49 ? u"Return"_s : QString(QChar(u'a' + i % 26)));
        std::this_thread::sleep_for(8ms);
    }
    std::this_thread::sleep_for(500ms);
    return (cpuSeconds(desktop.editorProcess()) - before) * 1000;
}

int run(int rounds, int idleSeconds) {
    EditorDesktop desktop;
    typingCost(desktop); // the editor's own caches fill
    Samples without;
    Samples with;
    pid_t process = -1;
    for (int round = 0; round < rounds; ++round) {
        without.add(typingCost(desktop));
        process = desktop.startOrvantile();
        with.add(typingCost(desktop));
        if (round + 1 < rounds) {
            desktop.stopOrvantile();
        }
    }
    Samples::printHeader();
    without.print(u"editor's CPU for 500 characters, alone, ms"_s);
    with.print(u"editor's CPU for 500 characters, observed, ms"_s);
    std::printf("observed, ratio of medians: %.3f\n", with.median() / std::max(without.median(), 1e-9));

    const auto woken = wakeups(process);
    const double used = cpuSeconds(process);
    std::this_thread::sleep_for(std::chrono::seconds(idleSeconds));
    std::printf("idle for %d s: %lld wakeups, %.0f ms CPU\n", idleSeconds,
                static_cast<long long>(wokenBetween(woken, wakeups(process))),
                (cpuSeconds(process) - used) * 1000);
    const auto held = memory(process);
    std::printf("memory: RSS %.1f MiB, PSS %.1f MiB, private dirty %.1f MiB\n", held.resident,
                held.proportional, held.privateDirty);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        return orvantile::bench::run(argc > 1 ? std::atoi(argv[1]) : 5, argc > 2 ? std::atoi(argv[2]) : 60);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
