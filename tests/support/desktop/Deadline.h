#pragma once

#include <QDeadlineTimer>
#include <chrono>

namespace orvantile::test {

/// How long a test waits for something that ought to happen at once, on a slow and busy machine.
inline constexpr std::chrono::seconds patience{15};

/// Waits until `descriptor` can be read or the deadline passes; the main loop turns meanwhile when there is
/// one. False at the deadline.
[[nodiscard]] bool awaitReadable(int descriptor, const QDeadlineTimer& deadline);

} // namespace orvantile::test
