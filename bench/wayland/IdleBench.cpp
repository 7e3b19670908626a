// What the whole program costs on Wayland while it idles with its preferences closed.

#include "support/desktop/ProcessCost.h"
#include "support/wayland/WaylandStage.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

const test::WaylandApplication editor{
    u"mousepad"_s, {u"--disable-server"_s, u"notes.txt"_s}, u"Mousepad"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};

int run(std::chrono::seconds time) {
    test::WaylandStage stage;
    stage.start(editor);
    stage.startOrvantile();
    stage.awaitCommandsOf(editor);
    std::this_thread::sleep_for(5s); // until what the editor tells at its start has been read
    const auto process = stage.orvantile().processIdentifier();
    const auto woken = test::wakeups(process);
    const auto used = test::cpuSeconds(process);
    std::this_thread::sleep_for(time);
    const auto held = test::memory(process);
    std::printf("idle for %lld s beside an editor: %lld wakeups, %.1f ms of CPU\n",
                static_cast<long long>(time.count()),
                static_cast<long long>(test::wokenBetween(woken, test::wakeups(process))),
                (test::cpuSeconds(process) - used) * 1000);
    std::printf("memory: RSS %.1f MiB, PSS %.1f MiB, private dirty %.1f MiB\n", held.resident,
                held.proportional, held.privateDirty);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        return orvantile::bench::run(std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 60));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
