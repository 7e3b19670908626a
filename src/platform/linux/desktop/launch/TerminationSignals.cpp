#include "platform/linux/desktop/launch/TerminationSignals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

constexpr std::array terminating{SIGTERM, SIGINT, SIGHUP};

/// A signal handler can be handed nothing.
std::atomic<int>& signalled() {
    static constinit std::atomic<int> descriptor{-1};
    static_assert(std::atomic<int>::is_always_lock_free);
    return descriptor;
}

void tellMainLoop(int) {
    const int formerError = errno;
    constexpr std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(signalled(), &one, sizeof one);
    errno = formerError;
}

void handleWith(void (*handler)(int), int flags) {
    for (const int signal : terminating) {
        struct sigaction action {};

        sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN) {
            continue;
        }
        action = {};
        action.sa_handler = handler;
        action.sa_flags = flags;
        sigaction(signal, &action, nullptr);
    }
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate)
    : event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!event.isOpen()) {
        return;
    }
    notifier = std::make_unique<QSocketNotifier>(event.get(), QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [this, terminate = std::move(terminate)] {
                         std::uint64_t count = 0;
                         if (::read(event.get(), &count, sizeof count) > 0) {
                             terminate();
                         }
                     });
    signalled() = event.get();
    handleWith(tellMainLoop, static_cast<int>(SA_RESTART | SA_RESETHAND));
}

TerminationSignals::~TerminationSignals() {
    if (event.isOpen()) {
        handleWith(SIG_DFL, 0);
        signalled() = -1;
    }
}

} // namespace orvantile::platform::desktop
