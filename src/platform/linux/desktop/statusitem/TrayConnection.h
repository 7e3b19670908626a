#pragma once

#include <QSocketNotifier>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <xcb/xcb.h>

namespace orvantile::platform::desktop {

struct CloseXConnection {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// Gives back memory that the X library has allocated.
struct FreeXReply {
    void operator()(void* reply) const {
        std::free(reply); // NOLINT(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    }
};

template <typename Reply>
using XReply = std::unique_ptr<Reply, FreeXReply>;

/// The icon's own connection to the X server, on the main loop. What the toolkit asks of the server stays
/// apart from it.
class TrayConnection {
public:
    using EventHandler = std::function<void(const xcb_generic_event_t&)>;

    /// Null when there is no X server.
    [[nodiscard]] static std::unique_ptr<TrayConnection> open();

    TrayConnection(std::unique_ptr<xcb_connection_t, CloseXConnection> connection, int screenNumber);
    TrayConnection(const TrayConnection&) = delete;
    TrayConnection& operator=(const TrayConnection&) = delete;
    ~TrayConnection() = default;

    /// Gets each event in a turn of the main loop.
    EventHandler onEvent;

    [[nodiscard]] xcb_connection_t* get() const { return connection.get(); }

    [[nodiscard]] const xcb_screen_t& screen() const { return *rootScreen; }

    [[nodiscard]] int screenNumber() const { return number; }

    [[nodiscard]] xcb_atom_t atom(const std::string& name) const;

    /// Sends what has been asked. Events that an answer has brought along are handled in the next turn.
    void flush();

private:
    void turn();

    std::unique_ptr<xcb_connection_t, CloseXConnection> connection;
    int number;
    const xcb_screen_t* rootScreen = nullptr;
    std::unique_ptr<QSocketNotifier> readable;
    bool turnPending = false;
};

} // namespace orvantile::platform::desktop
