#pragma once

#include <functional>

namespace orvantile::platform::macos {

/// Puts `work` on the main dispatch queue, which runs it on the main thread in a later turn, after everything
/// that was put there before. Any thread. Work that the process ends before is dropped.
void runOnMainQueue(std::function<void()> work);

/// The same, `seconds` from now; at once for a negative or absurd time.
void runOnMainQueueAfter(double seconds, std::function<void()> work);

} // namespace orvantile::platform::macos
