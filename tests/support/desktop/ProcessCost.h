#pragma once

#include <QString>
#include <cstdint>
#include <map>
#include <sys/types.h>

namespace orvantile::test {

/// CPU time that the process has used so far, with all its threads, in seconds; 0 when it has ended.
[[nodiscard]] double cpuSeconds(pid_t process);

/// How often each thread of the process has been woken so far (voluntary context switches), by thread.
using Wakeups = std::map<QString, std::int64_t>;

[[nodiscard]] Wakeups wakeups(pid_t process);

/// How often threads have been woken between the two; threads that have ended meanwhile do not count.
[[nodiscard]] std::int64_t wokenBetween(const Wakeups& before, const Wakeups& after);

/// Memory of a process, in MiB.
struct Memory {
    double resident = 0;
    double proportional = 0;
    double privateDirty = 0;
};

[[nodiscard]] Memory memory(pid_t process);

} // namespace orvantile::test
