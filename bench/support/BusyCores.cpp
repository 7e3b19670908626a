#include "support/BusyCores.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace orvantile::bench {

BusyCores::BusyCores() {
    for (unsigned core = 0; core < std::max(std::thread::hardware_concurrency(), 1U); ++core) {
        const pid_t parent = getpid();
        const pid_t child = fork();
        if (child == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            volatile unsigned turns = 0;
            while (getppid() == parent) {
                for (int i = 0; i < 1 << 20; ++i) {
                    turns = turns + 1;
                }
            }
            _exit(EXIT_SUCCESS);
        }
        if (child < 0) {
            throw std::runtime_error("no further process can be started");
        }
        processes.push_back(child);
    }
}

BusyCores::~BusyCores() {
    for (const pid_t process : processes) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
}

QString loadNow() {
    std::array<double, 1> average{};
    if (getloadavg(average.data(), 1) != 1) {
        return QStringLiteral("unknown");
    }
    return QStringLiteral("%1 on %2 processors")
        .arg(average[0], 0, 'f', 1)
        .arg(std::thread::hardware_concurrency());
}

} // namespace orvantile::bench
