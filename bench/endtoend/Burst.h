#pragma once

#include "support/desktop/XConnection.h"

#include <QRect>
#include <QString>
#include <chrono>
#include <deque>
#include <vector>

namespace orvantile::bench {

/// Presses shortcuts at a steady pace with one key after the other, Control held, and notes when the panel
/// takes which label and when the next picture of it reaches the screen.
class Burst {
public:
    struct Press {
        double time; ///< milliseconds since the beginning
        QString label;
    };

    struct Sight {
        double labelled;      ///< milliseconds since the beginning
        double pictured = -1; ///< negative: no picture before the next label
        QString label;
    };

    explicit Burst(const QString& display);

    struct Key {
        std::uint32_t symbol;
        QString label; ///< how the panel names it
    };

    /// Presses `perSecond` shortcuts for so long, and waits until the panel has gone.
    void run(const std::vector<Key>& keys, double perSecond, std::chrono::seconds time);

    [[nodiscard]] const std::vector<Press>& presses() const { return pressed; }

    [[nodiscard]] const std::vector<Sight>& sights() const { return seen; }

private:
    void press(std::uint8_t code) const;
    void awaitEvents(double until);
    void handle(const xcb_generic_event_t& event);
    void readLabels();
    [[nodiscard]] double now() const;

    test::XConnection x;
    std::uint8_t damageEvent = 0;
    std::uint8_t control = 0;
    xcb_window_t panel = XCB_NONE;
    QRect frame;
    bool mapped = false;
    std::chrono::steady_clock::time_point start;
    std::vector<Press> pressed;
    std::vector<Sight> seen;

    /// A question for the label, asked when it had just changed. Waiting for answers would delay the keys.
    struct Question {
        xcb_get_property_cookie_t cookie;
        std::size_t sight;
    };

    std::deque<Question> questions;
};

} // namespace orvantile::bench
