#pragma once

#include "support/desktop/XConnection.h"

#include <QElapsedTimer>
#include <QRect>
#include <QString>
#include <cstdint>
#include <vector>

namespace orvantile::bench {

/// Presses one combination and notes when a program's window is mapped and when the first pixel of it has
/// changed on the screen. It looks at a few pixels in the middle of the window only, and only while it waits
/// for the first change.
class Eyes {
public:
    explicit Eyes(const QString& display);
    Eyes(const Eyes&) = delete;
    Eyes& operator=(const Eyes&) = delete;
    ~Eyes() = default;

    /// Milliseconds since the key press was sent.
    struct Sighting {
        double mapped = -1; ///< negative: not within the time
        double changed = -1;

        [[nodiscard]] bool isComplete() const { return mapped >= 0 && changed >= 0; }
    };

    /// Looks at windows of that class from now on.
    void watch(const QString& className);

    /// Presses Ctrl+A once. Waits until the window shows and until it has gone again.
    Sighting shoot();

    /// When the latest key press was sent, in milliseconds of the steady clock.
    [[nodiscard]] double pressedAt() const { return pressed; }

    [[nodiscard]] std::uint8_t key() const { return letter; }

    /// Gives the desktop a colour on which everything is seen.
    void paintDesktop() const;

private:
    void send(std::uint8_t type, std::uint8_t code) const;
    void handle(const xcb_generic_event_t& event);
    void lookForChange(double time);
    [[nodiscard]] std::vector<std::uint32_t> pixels() const;
    [[nodiscard]] double elapsed() const;

    test::XConnection x;
    std::uint8_t damageEvent = 0;
    std::uint8_t control = 0;
    std::uint8_t letter = 0;
    QString wanted;
    xcb_window_t window = XCB_NONE;
    QRect probe;
    std::vector<std::uint32_t> before;
    QElapsedTimer clock;
    double pressed = 0;
    Sighting sighting;
    double touched = -1; ///< when something was drawn over the probe
    bool isMapped = false;
};

} // namespace orvantile::bench
