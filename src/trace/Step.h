#pragma once

#include <cstdint>

namespace orvantile::trace {

/// The steps on the way from a key to the screen that can be recorded.
enum class Step : std::uint8_t {
    key,        ///< a key press from the server, with the lookup
    lookup,     ///< which command it means
    report,     ///< the monitor's handling of it, with everything that follows in the same turn
    label,      ///< the words to show
    show,       ///< the controller's whole `show`
    measure,    ///< how large the label is
    shadow,     ///< and whatever else is drawn before the backdrop is known
    backdrop,   ///< the picture of what lies behind; waits for the server
    blur,       ///< of that picture
    paint,      ///< of the capsule
    compose,    ///< one picture of the panel out of these
    put,        ///< handing it to the server
    map,        ///< putting the window on the screen
    sound,      ///< handing the sound to its thread
    pixelsRead, ///< an instant: the server has read a picture
    turn        ///< of the main loop: from waking up to sleeping again
};

} // namespace orvantile::trace
