#include "platform/linux/desktop/IniDefaults.h"
#include "settings/Settings.h"

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

/// Times `count` assignments, `pause` apart, and prints how long each held its caller.
void measure(const char* title, int count, std::chrono::milliseconds pause,
             const std::function<void(int)>& assign) {
    std::vector<double> times;
    const auto start = Clock::now();
    for (int index = 0; index < count; ++index) {
        const auto before = Clock::now();
        assign(index);
        times.push_back(Microseconds(Clock::now() - before).count());
        std::this_thread::sleep_for(pause);
    }
    const double total = Microseconds(Clock::now() - start).count();
    std::ranges::sort(times);
    const auto at = [&](std::size_t percent) { return times[(times.size() - 1) * percent / 100]; };
    std::printf("%-44s %5d  median %7.1f us  p95 %7.1f us  max %7.1f us  all %8.1f ms\n", title, count,
                at(50), at(95), times.back(), total / 1000);
}

} // namespace

int main(int argc, char* argv[]) {
    using namespace orvantile;
    using namespace std::chrono_literals;

    const QTemporaryDir temporary(argc > 1 ? QString::fromLocal8Bit(argv[1]) + QStringLiteral("/XXXXXX")
                                           : QString());
    const auto path = temporary.filePath(QStringLiteral("orvantile.ini")).toStdString();
    platform::desktop::IniDefaults defaults(path);
    Settings settings(defaults);

    const auto drag = [&](int index) { settings.fontSize = 12 + index * 52.0 / 600; };
    measure("slider drag, 8 ms between events", 600, 8ms, drag);
    measure("slider drag, 1 ms between events", 600, 1ms, drag);
    measure("slider drag, as fast as it goes", 600, 0ms, drag);
    measure("switch, 600 ms apart (after each sync)", 10, 600ms,
            [&](int index) { settings.enabled = index % 2 == 0; });
    measure("all twelve reset", 20, 100ms, [&](int) { settings.resetToDefaults(); });
}
