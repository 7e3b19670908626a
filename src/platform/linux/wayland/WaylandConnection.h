#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <wayland-client-core.h>

class QSocketNotifier;

namespace orvantile::platform::wayland {

/// The program's own connection to the compositor, beside the toolkit's: its events need no turn of the
/// toolkit's reader thread, and it works with any of the toolkit's window systems. Main thread only.
class WaylandConnection {
public:
    /// Connects to the compositor that the environment names; null when there is none.
    [[nodiscard]] static std::unique_ptr<WaylandConnection> open();

    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;
    ~WaylandConnection();

    [[nodiscard]] wl_display* get() const { return display.get(); }

    [[nodiscard]] int descriptor() const { return wl_display_get_fd(get()); }

    /// False once the compositor has gone or has thrown the program out.
    [[nodiscard]] bool isOpen() const { return wl_display_get_error(get()) == 0; }

    /// Sends what is waiting to be sent, as far as the compositor takes it now; the rest follows by itself.
    void flush();

    /// Waits for everything asked so far. For the program's start.
    void synchronize();

    /// Called once when the compositor has gone. A complaint of the compositor about a request closes the
    /// connection as well, but is no reason to end: this is not called then.
    std::function<void()> onGone;

private:
    struct Disconnect {
        void operator()(wl_display* display) const noexcept { wl_display_disconnect(display); }
    };

    using DisplayHandle = std::unique_ptr<wl_display, Disconnect>;

    explicit WaylandConnection(DisplayHandle display);

    void read();
    void close();

    DisplayHandle display;
    std::unique_ptr<QSocketNotifier> readable;
    std::unique_ptr<QSocketNotifier> writable;
    bool closed = false;
};

} // namespace orvantile::platform::wayland
