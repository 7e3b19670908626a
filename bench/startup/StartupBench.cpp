// From the start of the process to the preferences on the screen; then what the program costs while it idles
// with its item in a panel.

#include "support/Samples.h"
#include "support/desktop/BusTraffic.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/ProcessCost.h"
#include "support/desktop/WindowWatcher.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

const QString preferencesTitle = u"Orvantile Preferences"_s;

double millisecondsSince(steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(steady_clock::now() - begin).count();
}

std::unique_ptr<test::ChildProcess> launch(const test::PrivateSession& session) {
    return session.start(QStringLiteral(ORVANTILE_EXECUTABLE));
}

void measureStart(const test::PrivateSession& session, int count) {
    Samples wall;
    Samples cpu;
    const test::WindowWatcher windows(session.display());
    for (int shot = 0; shot <= count; ++shot) {
        const auto begin = steady_clock::now();
        const auto program = launch(session);
        windows.awaitWindow(test::titled(preferencesTitle));
        const auto elapsed = millisecondsSince(begin);
        const auto used = test::cpuSeconds(program->processIdentifier()) * 1000;
        if (shot > 0) { // the first fills the caches of files
            wall.add(elapsed);
            cpu.add(used);
        }
        program->end();
    }
    Samples::printHeader();
    wall.print(u"process start to the preferences mapped, wall clock"_s);
    cpu.print(u"… CPU of the process with all its threads"_s);
}

void measureIdling(const test::PrivateSession& session, std::chrono::seconds time) {
    const test::BusTraffic traffic(session.sessionBusAddress());
    const auto panel = session.start(u"xfce4-panel"_s);
    const test::WindowWatcher windows(session.display());
    windows.awaitWindow(test::ofProcess(panel->processIdentifier()), QDeadlineTimer(60s));
    const auto program = launch(session);
    if (!traffic.await(u"StatusNotifierItemRegistered"_s, {}, QDeadlineTimer(60s))) {
        std::fprintf(stderr, "the panel does not take the item: idle without it\n");
    }
    const auto preferences = windows.awaitWindow(test::titled(preferencesTitle));
    windows.close(preferences.handle);
    windows.awaitGone(preferences.handle);
    const auto process = program->processIdentifier();
    std::this_thread::sleep_for(5s); // the panel asks for the item's menu and icon
    const auto woken = test::wakeups(process);
    const auto used = test::cpuSeconds(process);
    std::this_thread::sleep_for(time);
    const auto held = test::memory(process);
    std::printf("idle for %lld s with the item in a panel: %lld wakeups, %.1f ms of CPU\n",
                static_cast<long long>(time.count()),
                static_cast<long long>(test::wokenBetween(woken, test::wakeups(process))),
                (test::cpuSeconds(process) - used) * 1000);
    std::printf("memory: RSS %.1f MiB, PSS %.1f MiB, private dirty %.1f MiB\n", held.resident,
                held.proportional, held.privateDirty);
}

int run(int shots, int idleSeconds) {
    const test::PrivateSession session;
    measureStart(session, shots);
    measureIdling(session, std::chrono::seconds(idleSeconds));
    return EXIT_SUCCESS;
}

} // namespace
} // namespace orvantile::bench

int main(int argc, char* argv[]) {
    try {
        return orvantile::bench::run(argc > 1 ? std::atoi(argv[1]) : 30, argc > 2 ? std::atoi(argv[2]) : 60);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
