#include "platform/linux/desktop/bus/SessionBus.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <optional>
#include <poll.h>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// A turn lets others have theirs after this time.
constexpr milliseconds turnBudget{2};

constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();

std::optional<std::string> sessionBusAddress() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address != nullptr) {
        return address;
    }
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::string path = std::string(runtime != nullptr ? runtime : "") + "/bus";

    struct stat status {};

    if (runtime != nullptr && ::stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode)) {
        return "unix:path=" + path;
    }
    return std::nullopt;
}

/// Other addresses would resolve host names or run programs, which blocks.
bool isLocalSocket(std::string_view address) {
    return address.starts_with("unix:path=") || address.starts_with("unix:abstract=");
}

int received(sd_bus_message* message, void* data, sd_bus_error*) {
    // The handler may release its own slot, and itself with it.
    const auto handler = *static_cast<SessionBus::Handler*>(data);
    handler(*message);
    return 0;
}

void forget(void* data) {
    const std::unique_ptr<SessionBus::Handler> owned(static_cast<SessionBus::Handler*>(data));
}

std::uint64_t monotonicMicroseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000U +
           static_cast<std::uint64_t>(now.tv_nsec) / 1'000U;
}

} // namespace

std::unique_ptr<SessionBus> SessionBus::open() {
    const auto address = sessionBusAddress();
    sd_bus* created = nullptr;
    if (!address || !isLocalSocket(*address) || sd_bus_new(&created) < 0) {
        return nullptr;
    }
    BusHandle bus(created);
    if (sd_bus_set_address(created, address->c_str()) < 0 || sd_bus_set_bus_client(created, 1) < 0 ||
        sd_bus_start(created) < 0) {
        return nullptr;
    }
    return std::make_unique<SessionBus>(std::move(bus));
}

bool SessionBus::awaitReady(milliseconds timeout) {
    const auto end = steady_clock::now() + timeout;
    while (sd_bus_is_ready(bus.get()) == 0) {
        const int processed = sd_bus_process(bus.get(), nullptr);
        const auto left = std::chrono::duration_cast<microseconds>(end - steady_clock::now());
        if (processed < 0 || left <= microseconds::zero()) {
            return false;
        }
        if (processed == 0 && sd_bus_wait(bus.get(), static_cast<std::uint64_t>(left.count())) < 0) {
            return false;
        }
    }
    return sd_bus_is_ready(bus.get()) > 0;
}

void SessionBus::attach() {
    const int descriptor = sd_bus_get_fd(bus.get());
    timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this] { turn(); });
    readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    writable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    for (auto* notifier : {readable.get(), writable.get()}) {
        QObject::connect(notifier, &QSocketNotifier::activated, notifier, [this] { turn(); });
    }
    watch();
}

MessageHandle SessionBus::method(const std::string& destination, const char* path, const char* interface,
                                 const char* member) const {
    sd_bus_message* message = nullptr;
    sd_bus_message_new_method_call(bus.get(), &message, destination.c_str(), path, interface, member);
    return MessageHandle(message);
}

void SessionBus::send(MessageHandle message) {
    if (message) {
        sd_bus_send(bus.get(), message.get(), nullptr);
        watch();
    }
}

SlotHandle SessionBus::call(MessageHandle message, Handler handler) {
    auto owned = std::make_unique<Handler>(std::move(handler));
    sd_bus_slot* slot = nullptr;
    if (!message || sd_bus_call_async(bus.get(), &slot, message.get(), received, owned.get(),
                                      static_cast<std::uint64_t>(microseconds(patience).count())) < 0) {
        return nullptr;
    }
    return keep(slot, std::move(owned));
}

SlotHandle SessionBus::subscribe(const std::string& rule, Handler handler) {
    auto owned = std::make_unique<Handler>(std::move(handler));
    sd_bus_slot* slot = nullptr;
    if (sd_bus_add_match_async(bus.get(), &slot, rule.c_str(), received, nullptr, owned.get()) < 0) {
        return nullptr;
    }
    return keep(slot, std::move(owned));
}

SlotHandle SessionBus::keep(sd_bus_slot* slot, std::unique_ptr<Handler> handler) {
    SlotHandle kept(slot);
    sd_bus_slot_set_destroy_callback(slot, forget);
    static_cast<void>(handler.release());
    watch();
    return kept;
}

void SessionBus::turn() {
    if (turning) {
        return;
    }
    turning = true;
    const auto end = steady_clock::now() + turnBudget;
    int result = 1;
    while (result > 0 && steady_clock::now() < end) {
        result = sd_bus_process(bus.get(), nullptr);
    }
    turning = false;
    if (result < 0) {
        fail();
    } else {
        watch();
    }
}

void SessionBus::watch() {
    if (!timer || turning) {
        return;
    }
    const int events = sd_bus_get_events(bus.get());
    std::uint64_t deadline = never;
    if (events < 0 || sd_bus_get_timeout(bus.get(), &deadline) < 0) {
        fail();
        return;
    }
    writable->setEnabled((events & POLLOUT) != 0);
    if (deadline == never) {
        timer->stop();
        return;
    }
    const auto now = monotonicMicroseconds();
    const auto wait = deadline <= now ? 0 : (deadline - now) / 1'000 + 1;
    timer->start(static_cast<int>(std::min<std::uint64_t>(wait, std::numeric_limits<int>::max())));
}

void SessionBus::fail() {
    if (!readable->isEnabled() && !writable->isEnabled()) {
        return;
    }
    timer->stop();
    readable->setEnabled(false);
    writable->setEnabled(false);
    QMetaObject::invokeMethod(
        timer.get(),
        [this] {
            if (const auto told = onClosed) {
                told();
            }
        },
        Qt::QueuedConnection);
}

} // namespace orvantile::platform::desktop
