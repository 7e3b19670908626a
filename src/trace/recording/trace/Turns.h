#pragma once

namespace orvantile::trace {

/// Records each turn of the main loop, from the end of one wait to the beginning of the next: how long
/// anything else had to wait. Made once the application object exists. Main thread only.
class [[maybe_unused]] Turns {
public:
    Turns();
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;
    ~Turns();
};

} // namespace orvantile::trace
