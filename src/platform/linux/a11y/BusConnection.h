#pragma once

#include "platform/linux/a11y/BusHandles.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace orvantile::platform::a11y {

/// A connection to a message bus on the main loop. Nothing waits: calls are answered in a later turn, and a
/// turn handles messages for about two milliseconds before it lets others have theirs. Main thread only.
class BusConnection {
public:
    using Hook = std::function<void()>;

    /// Gets an answer (which may be an error) or a signal. It may not destroy the connection.
    using Handler = std::function<void(sd_bus_message& message)>;

    /// While this lives, answers are wanted.
    using Owner = std::shared_ptr<const void>;

    /// Calls without an answer in this time end with an error.
    static constexpr std::chrono::milliseconds patience{1500};
    static constexpr std::chrono::milliseconds endless{-1};

    /// `drainFirst` is called before each message is handled, so that what the window system has sent by then
    /// is judged by what was known before the message.
    explicit BusConnection(Hook drainFirst);
    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection() = default;

    /// Called in a turn of its own when the connection has ended by itself or never came to be.
    std::function<void()> onClosed;

    /// Starts connecting. Only sockets of this machine are accepted. False when `address` is no such.
    bool open(const std::string& address);

    /// Ends the connection with all calls and subscriptions; their handlers are not called any more.
    void close();

    [[nodiscard]] bool isOpen() const { return bus != nullptr; }

    /// A call to be filled and passed to `call`; null without a connection.
    [[nodiscard]] MessageHandle method(const std::string& destination, const std::string& path,
                                       const char* interface, const char* member) const;

    /// Sends `message`. Its answer goes to `handler` if `owner` still lives then.
    void call(MessageHandle message, const Owner& owner, Handler handler,
              std::chrono::milliseconds timeout = patience);

    /// Handles what has arrived so far, for about as long as a turn takes at the most.
    void drain() { turn(); }

    /// Signals that match `rule` go to `handler` until the slot is released.
    [[nodiscard]] SlotHandle subscribe(const std::string& rule, Handler handler);

private:
    void turn();
    void watch();
    void fail();

    Hook drainFirst;
    std::unique_ptr<QSocketNotifier> readable;
    std::unique_ptr<QSocketNotifier> writable;
    QTimer timer;
    bool turning = false;
    BusHandle bus; ///< goes first, while the handlers' surroundings still stand
};

} // namespace orvantile::platform::a11y
