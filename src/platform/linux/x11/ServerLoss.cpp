#include "platform/linux/x11/ServerLoss.h"

#include <cstdio>
#include <cstdlib>
#include <poll.h>

namespace orvantile::platform::x11 {
namespace {

/// What runs at exit can be handed nothing.
int& watchedSocket() {
    static int socket = -1;
    return socket;
}

bool serverIsGone() {
    // A server that ends closes its connections one after the other.
    constexpr int patienceMilliseconds = 500;
    pollfd state{watchedSocket(), 0, 0};
    return state.fd >= 0 && poll(&state, 1, patienceMilliseconds) > 0 &&
           (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

void endCleanly() {
    if (serverIsGone()) {
        std::fputs("orvantile: the X server has gone\n", stderr);
        std::fflush(nullptr);
        std::_Exit(EXIT_SUCCESS);
    }
}

} // namespace

void leaveCleanlyWithoutServer() {
    std::atexit(endCleanly);
}

void watchServer(int socket) {
    watchedSocket() = socket;
}

} // namespace orvantile::platform::x11
