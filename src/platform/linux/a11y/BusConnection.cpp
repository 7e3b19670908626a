#include "platform/linux/a11y/BusConnection.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <poll.h>
#include <string_view>
#include <utility>

namespace orvantile::platform::a11y {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds turnBudget{2};
constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();

struct PendingCall {
    std::weak_ptr<const void> owner;
    BusConnection::Handler handler;
};

int answered(sd_bus_message* message, void* data, sd_bus_error*) {
    const auto& pending = *static_cast<PendingCall*>(data);
    if (!pending.owner.expired()) {
        pending.handler(*message);
    }
    return 0;
}

int signalled(sd_bus_message* message, void* data, sd_bus_error*) {
    (*static_cast<BusConnection::Handler*>(data))(*message);
    return 0;
}

template <typename Data>
void forget(void* data) {
    const std::unique_ptr<Data> owned(static_cast<Data*>(data));
}

/// sd-bus could also resolve host names or run programs for an address, which would block.
bool isLocalSocket(std::string_view address) {
    return address.starts_with("unix:path=") || address.starts_with("unix:abstract=");
}

std::uint64_t monotonicMicroseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000U +
           static_cast<std::uint64_t>(now.tv_nsec) / 1'000U;
}

} // namespace

BusConnection::BusConnection(Hook drainFirst_) : drainFirst(std::move(drainFirst_)) {
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { turn(); });
}

bool BusConnection::open(const std::string& address) {
    close();
    sd_bus* created = nullptr;
    if (!isLocalSocket(address) || sd_bus_new(&created) < 0) {
        return false;
    }
    BusHandle fresh(created);
    if (sd_bus_set_address(fresh.get(), address.c_str()) < 0 || sd_bus_set_bus_client(fresh.get(), 1) < 0 ||
        sd_bus_start(fresh.get()) < 0) {
        return false;
    }
    const int descriptor = sd_bus_get_fd(fresh.get());
    if (descriptor < 0) {
        return false;
    }
    bus = std::move(fresh);
    readable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    writable = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Write);
    for (auto* notifier : {readable.get(), writable.get()}) {
        QObject::connect(notifier, &QSocketNotifier::activated, notifier, [this] { turn(); });
    }
    watch();
    return true;
}

void BusConnection::close() {
    timer.stop();
    // A notifier may be what is calling.
    for (auto* notifier : {&readable, &writable}) {
        if (*notifier) {
            (*notifier)->setEnabled(false);
            notifier->release()->deleteLater();
        }
    }
    bus.reset();
}

MessageHandle BusConnection::method(const std::string& destination, const std::string& path,
                                    const char* interface, const char* member) const {
    sd_bus_message* message = nullptr;
    if (bus) {
        sd_bus_message_new_method_call(bus.get(), &message, destination.c_str(), path.c_str(), interface,
                                       member);
    }
    return MessageHandle(message);
}

void BusConnection::call(MessageHandle message, const Owner& owner, Handler handler,
                         std::chrono::milliseconds timeout) {
    if (!bus || !message) {
        return;
    }
    auto pending = std::make_unique<PendingCall>(PendingCall{owner, std::move(handler)});
    sd_bus_slot* slot = nullptr;
    const auto wait = timeout < std::chrono::milliseconds::zero()
                          ? never
                          : static_cast<std::uint64_t>(std::chrono::microseconds(timeout).count());
    if (sd_bus_call_async(bus.get(), &slot, message.get(), answered, pending.get(), wait) < 0) {
        return;
    }
    // The connection keeps the slot until the answer is there.
    const SlotHandle handle(slot);
    sd_bus_slot_set_destroy_callback(slot, forget<PendingCall>);
    static_cast<void>(pending.release());
    sd_bus_slot_set_floating(slot, 1);
    watch();
}

SlotHandle BusConnection::subscribe(const std::string& rule, Handler handler) {
    auto owned = std::make_unique<Handler>(std::move(handler));
    sd_bus_slot* slot = nullptr;
    if (!bus || sd_bus_add_match_async(bus.get(), &slot, rule.c_str(), signalled, nullptr, owned.get()) < 0) {
        return nullptr;
    }
    sd_bus_slot_set_destroy_callback(slot, forget<Handler>);
    static_cast<void>(owned.release());
    watch();
    return SlotHandle(slot);
}

void BusConnection::turn() {
    if (turning) {
        return;
    }
    turning = true;
    const auto end = Clock::now() + turnBudget;
    int result = 1;
    while (bus && result > 0 && Clock::now() < end) {
        if (drainFirst) {
            drainFirst();
        }
        result = bus ? sd_bus_process(bus.get(), nullptr) : 0;
    }
    turning = false;
    if (result < 0) {
        fail();
    } else {
        watch();
    }
}

void BusConnection::watch() {
    if (!bus || turning) {
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
        timer.stop();
        return;
    }
    const auto now = monotonicMicroseconds();
    const auto wait = deadline <= now ? 0 : (deadline - now) / 1'000 + 1;
    timer.start(static_cast<int>(std::min<std::uint64_t>(wait, std::numeric_limits<int>::max())));
}

void BusConnection::fail() {
    close();
    // Whoever hears of it may want to destroy this connection.
    QMetaObject::invokeMethod(
        &timer,
        [this] {
            if (!bus && onClosed) {
                const auto told = onClosed;
                told();
            }
        },
        Qt::QueuedConnection);
}

} // namespace orvantile::platform::a11y
