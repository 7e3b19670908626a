#pragma once

#include "support/desktop/XConnection.h"

#include <cstddef>
#include <sys/types.h>

namespace orvantile::test {

/// What a program holds of the system at one moment.
struct ResourceUse {
    double residentMiB = 0;
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    std::size_t serverObjects = 0; ///< windows, pixmaps and so on that the X server keeps for it
    std::size_t matchRules = 0;    ///< on the buses, in all; 0 where a bus does not tell
};

/// `buses` are the addresses of the message buses that it may be on.
[[nodiscard]] ResourceUse resourceUse(pid_t process, const XConnection& x, const QStringList& buses);

} // namespace orvantile::test
