#pragma once

namespace orvantile::platform::desktop {

/// Has freed pictures go back to the system instead of waiting in the process for the next one. For the start
/// of the program.
void returnFreedMemory();

} // namespace orvantile::platform::desktop
