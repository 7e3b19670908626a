#pragma once

#include "support/desktop/Deadline.h"

#include <QString>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace orvantile::test {

/// Frees what the X client library has allocated.
struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

template <typename Reply>
using XReply = std::unique_ptr<Reply, FreeReply>;

/// A connection of a test to an X server.
class XConnection {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t& event)>;

    /// Throws std::runtime_error when there is no such server.
    explicit XConnection(const QString& display);
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;
    ~XConnection();

    [[nodiscard]] xcb_connection_t* get() const { return connection; }

    [[nodiscard]] xcb_window_t root() const { return screen->root; }

    [[nodiscard]] const xcb_screen_t& rootScreen() const { return *screen; }

    [[nodiscard]] xcb_atom_t atom(const char* name) const;

    /// Chooses which events of `window` arrive; replaces the former choice.
    void select(xcb_window_t window, std::uint32_t eventMask) const;

    /// A property of 32-bit items, such as cardinals, windows or atoms; empty when absent.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, const char* property) const;

    /// A property of bytes, with its zero bytes; empty when absent.
    [[nodiscard]] QByteArray bytes(xcb_window_t window, const char* property) const;

    /// Passes on each event that arrives until `done` holds, which is asked first and after each batch. False
    /// at the deadline or when the server has gone.
    bool await(const std::function<bool()>& done, const EventHandler& handler,
               const QDeadlineTimer& deadline) const;

    /// Passes on the events that have arrived for certain: after a round trip to the server.
    void drain(const EventHandler& handler) const;

    /// Returns when the server has handled everything sent so far.
    void synchronize() const;

private:
    bool passOn(const EventHandler& handler) const;

    xcb_connection_t* connection;
    xcb_screen_t* screen = nullptr;
    mutable std::map<std::string, xcb_atom_t> atoms;
};

} // namespace orvantile::test
