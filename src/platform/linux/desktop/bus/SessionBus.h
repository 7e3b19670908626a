#pragma once

#include "platform/linux/desktop/bus/BusHandles.h"

#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace orvantile::platform::desktop {

/// A connection of its own to the user's session bus. Main thread only.
class SessionBus {
public:
    /// Gets an answer (which may be an error) or a signal. It may not destroy the connection.
    using Handler = std::function<void(sd_bus_message& message)>;

    /// Calls without an answer in this time end with an error.
    static constexpr std::chrono::milliseconds patience{1500};

    /// Starts connecting and returns at once. Null when there is no session bus, or none on a socket of this
    /// machine.
    [[nodiscard]] static std::unique_ptr<SessionBus> open();

    explicit SessionBus(BusHandle bus_) : bus(std::move(bus_)) {}

    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    ~SessionBus() = default;

    /// For exporting objects and composing messages.
    [[nodiscard]] sd_bus* handle() const { return bus.get(); }

    /// Waits until the bus has admitted this connection, before the main loop runs. False when it has not
    /// done so in `timeout`.
    [[nodiscard]] bool awaitReady(std::chrono::milliseconds timeout);

    /// Handles messages on the main loop from now on.
    void attach();

    /// Called in a turn of its own when the bus has ended an attached connection. May destroy it.
    std::function<void()> onClosed;

    [[nodiscard]] MessageHandle method(const std::string& destination, const char* path,
                                       const char* interface, const char* member) const;

    /// Sends a message that has no answer.
    void send(MessageHandle message);

    /// Sends a call. Its answer goes to `handler` unless the slot is released before.
    [[nodiscard]] SlotHandle call(MessageHandle message, Handler handler);

    /// Signals that match `rule` go to `handler` until the slot is released.
    [[nodiscard]] SlotHandle subscribe(const std::string& rule, Handler handler);

private:
    [[nodiscard]] SlotHandle keep(sd_bus_slot* slot, std::unique_ptr<Handler> handler);
    void turn();
    void watch();
    void fail();

    std::unique_ptr<QSocketNotifier> readable;
    std::unique_ptr<QSocketNotifier> writable;
    std::unique_ptr<QTimer> timer;
    bool turning = false;
    BusHandle bus;
};

} // namespace orvantile::platform::desktop
