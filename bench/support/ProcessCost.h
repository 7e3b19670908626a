#pragma once

#include <cstdint>
#include <sys/types.h>

namespace orvantile::bench {

/// CPU time that the process has used so far, user and system, in seconds.
[[nodiscard]] double cpuSeconds(pid_t process);

/// How often the threads of the process have been woken so far (voluntary context switches).
[[nodiscard]] std::int64_t wakeups(pid_t process);

/// Memory of a process, in MiB.
struct Memory {
    double resident = 0;
    double proportional = 0;
    double privateDirty = 0;
};

[[nodiscard]] Memory memory(pid_t process);

} // namespace orvantile::bench
