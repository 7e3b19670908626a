#pragma once

#include "platform/linux/a11y/BusHandles.h"

#include <cstdint>
#include <span>
#include <string>

namespace orvantile::test {

/// The end of a connection whose other end is played by the test, to get messages the way they really come:
/// as bytes from a socket.
class BusMessages {
public:
    BusMessages();
    BusMessages(const BusMessages&) = delete;
    BusMessages& operator=(const BusMessages&) = delete;
    ~BusMessages();

    /// An answer with a body of these bytes (little endian), said to be of the type `signature`. Null when
    /// the library refuses it at sight.
    [[nodiscard]] platform::a11y::MessageHandle answer(const std::string& signature,
                                                       std::span<const std::uint8_t> body);

    /// An answer to be filled by the test; `sealed` makes it readable.
    [[nodiscard]] platform::a11y::MessageHandle blank() const;
    [[nodiscard]] static platform::a11y::MessageHandle sealed(platform::a11y::MessageHandle message);

private:
    platform::a11y::BusHandle bus;
    int peer = -1;
};

} // namespace orvantile::test
