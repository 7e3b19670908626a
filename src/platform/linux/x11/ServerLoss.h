#pragma once

namespace orvantile::platform::x11 {

/// Makes the loss of the display server a clean end of the process. The toolkit calls exit(1) by itself when
/// its own connection breaks, which may come before the main loop hears of it; from here on the process ends
/// with 0 then. Everything the user has set is on disk by that time.
void leaveCleanlyWithoutServer();

/// The socket that tells whether the server is there, or −1 when the process ends for other reasons. Not
/// owned.
void watchServer(int socket);

} // namespace orvantile::platform::x11
