#pragma once

namespace orvantile::platform::wayland {

/// Makes the loss of the compositor a clean end of the process. The toolkit complains and leaves with a
/// failure by itself when its own connection breaks, without a word to anybody; from here on its complaint
/// ends the process with 0 when the compositor has really gone. Everything the user has set is on disk by
/// that time.
void leaveCleanlyWithoutCompositor();

/// The socket that tells whether the compositor is there, or −1 while nobody knows. Not owned.
void watchCompositor(int socket);

} // namespace orvantile::platform::wayland
