#pragma once

#include "platform/linux/x11/Atoms.h"
#include "platform/linux/x11/Reply.h"

#include <QObject>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

class QSocketNotifier;

namespace orvantile::platform::x11 {

/// The program's own connection to the X server, beside the toolkit's. Nothing here waits for the server once
/// it is open: requests are asked and answered later. Errors of requests are ignored. Whoever listens or asks
/// lives as long as the connection or has let go of its token. Main thread only.
class XConnection {
public:
    using Listener = std::function<void(const xcb_generic_event_t&)>;
    /// Ends the listening when released.
    using Token = std::shared_ptr<const void>;

    /// Connects to the display that the environment names; null when there is no server.
    [[nodiscard]] static std::unique_ptr<XConnection> open();

    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;
    ~XConnection();

    [[nodiscard]] xcb_connection_t* get() const { return connection.get(); }

    [[nodiscard]] const Atoms& atoms() const { return names; }

    [[nodiscard]] const xcb_screen_t& screen() const { return *defaultScreen; }

    [[nodiscard]] xcb_window_t root() const { return defaultScreen->root; }

    /// Adds to the events of the root window that are wanted.
    void selectRootEvents(std::uint32_t mask);

    /// Hands every event to `listener`, in the order in which the server sent them.
    [[nodiscard]] Token listen(Listener listener);

    /// Calls `handler` with the reply to the request, or null when it failed, in the order of the requests
    /// and in its place among the events. `Type` is the reply's.
    template <typename Type, typename Cookie, typename Handler>
    void ask(Cookie cookie, Handler handler) {
        pending.push_back({cookie.sequence, [handler = std::move(handler)](const void* reply) {
                               handler(static_cast<const Type*>(reply));
                           }});
    }

    /// Handles everything that has arrived. Does nothing when called from a handler.
    void drain() { process(true); }

    /// Waits for the replies to everything asked so far and handles what has arrived. For the program's
    /// start.
    void synchronize();

    /// Sends what is waiting to be sent. Done by itself before the main loop rests.
    void flush();

    /// False once the server is gone.
    [[nodiscard]] bool isOpen() const;

    /// Called once when the server has gone.
    std::function<void()> onClosed;

private:
    struct Disconnect {
        void operator()(xcb_connection_t* open) const noexcept { xcb_disconnect(open); }
    };

    using Handle = std::unique_ptr<xcb_connection_t, Disconnect>;

    struct Pending {
        std::uint32_t sequence;
        std::function<void(const void*)> handler;
    };

    XConnection(Handle connection, const xcb_screen_t& screen, int screenNumber);

    void process(bool readSocket);
    void dispatch(const xcb_generic_event_t& event);

    /// Delivers the replies that have arrived to requests up to `sequence`, or to all.
    void deliverReplies(const std::uint32_t* sequence);

    Handle connection;
    const xcb_screen_t* defaultScreen;
    Atoms names;
    std::uint32_t rootEvents = 0;
    std::deque<Pending> pending;
    std::vector<std::weak_ptr<const Listener>> listeners;
    bool processing = false;
    bool closed = false;
    std::unique_ptr<QSocketNotifier> notifier;
    QObject context;
};

/// Whether the display that the environment names can be connected to.
[[nodiscard]] bool isServerReachable();

} // namespace orvantile::platform::x11
