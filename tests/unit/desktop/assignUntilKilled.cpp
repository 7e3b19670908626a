#include "platform/linux/desktop/IniDefaults.h"

#include <chrono>
#include <cstdio>
#include <numeric>
#include <thread>
#include <utility>
#include <vector>

/// Assigns 1, 2, 3 … to `fontSize` in the INI file given as argument, and prints each number once it must be
/// in the file. Ends when it is killed.
int main(int argc, char* argv[]) {
    using namespace std::chrono_literals;
    using Clock = std::chrono::steady_clock;
    using orvantile::platform::desktop::AssignmentWriter;

    if (argc != 2) {
        return 2;
    }
    orvantile::platform::desktop::IniDefaults defaults(argv[1]);
    const auto key = QStringLiteral("fontSize");
    std::vector<std::pair<Clock::time_point, Clock::duration>> recent;
    for (int number = static_cast<int>(defaults.doubleForKey(key)) + 1;; ++number) {
        const auto start = Clock::now();
        defaults.set(key, static_cast<double>(number));
        recent.emplace_back(start, Clock::now() - start);
        std::erase_if(recent,
                      [&](const auto& one) { return start - one.first > AssignmentWriter::window * 2; });
        const auto waited = std::accumulate(recent.begin(), recent.end(), Clock::duration::zero(),
                                            [](auto sum, const auto& one) { return sum + one.second; });
        std::printf("%d\n", waited < AssignmentWriter::allowance ? number : 0);
        std::fflush(stdout);
        std::this_thread::sleep_for(3ms); // as the events of a slider
    }
}
