#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvantile::platform::a11y {

/// A key press as an application tells it.
struct Keystroke {
    keys::KeySymbol symbol = 0;  ///< that the key gives with the modifiers
    std::uint32_t code = 0;      ///< of the key, as XKB numbers them
    std::uint32_t modifiers = 0; ///< the eight that every keymap has, Shift in the lowest bit

    friend bool operator==(const Keystroke&, const Keystroke&) = default;
};

/// Hears the keys that applications tell the registry of accessible programs before they act on them. It asks
/// for combinations with Control, Alt or Super and for function and navigation keys only: typed text is not
/// even sent here. An application waits for the answer with each such key, so answers are given by a thread
/// that does nothing else, and never keep a key from the application. Main thread, except where noted.
class KeystrokeListener {
public:
    /// Listens on the bus at `address` from now on. `onHeard` is called in the listener's thread, after the
    /// press can be taken and before the application goes on.
    KeystrokeListener(std::string address, std::function<void()> onHeard);
    KeystrokeListener(const KeystrokeListener&) = delete;
    KeystrokeListener& operator=(const KeystrokeListener&) = delete;
    ~KeystrokeListener();

    /// Whether the registry has accepted, and the bus is still there.
    [[nodiscard]] bool hears() const;

    /// The presses not yet taken, in order.
    [[nodiscard]] std::vector<Keystroke> take();

private:
    class Ear;
    std::unique_ptr<Ear> ear;
};

} // namespace orvantile::platform::a11y
