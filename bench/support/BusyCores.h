#pragma once

#include <QString>
#include <sys/types.h>
#include <vector>

namespace orvantile::bench {

/// One process that never rests for each processor, as long as this lives.
class BusyCores {
public:
    BusyCores();
    BusyCores(const BusyCores&) = delete;
    BusyCores& operator=(const BusyCores&) = delete;
    ~BusyCores();

    [[nodiscard]] std::size_t count() const { return processes.size(); }

private:
    std::vector<pid_t> processes;
};

/// How many processes want a processor on average over the last minute, and how many processors there are.
[[nodiscard]] QString loadNow();

} // namespace orvantile::bench
