#pragma once

#include "platform/linux/x11/XConnection.h"

#include <functional>

namespace orvantile::platform::x11 {

/// Whether somebody blends translucent windows, as it comes and goes. Main thread only.
class Compositor {
public:
    explicit Compositor(XConnection& connection);
    Compositor(const Compositor&) = delete;
    Compositor& operator=(const Compositor&) = delete;
    ~Compositor() = default;

    [[nodiscard]] bool isRunning() const { return running; }

    /// Whether it blurs what lies behind the windows that ask for it.
    [[nodiscard]] bool blurs() const { return running && offersBlur; }

    /// Called after `isRunning` has changed.
    std::function<void()> onChanged;

private:
    void handle(const xcb_generic_event_t& event);
    void setRunning(bool nowRunning);
    void askBlur();

    XConnection& connection;
    bool running = false;
    bool offersBlur = false;
    std::uint8_t selectionEvent = 0;
    XConnection::Token token;
};

} // namespace orvantile::platform::x11
