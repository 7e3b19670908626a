#include "platform/linux/desktop/FreedMemory.h"

#include <malloc.h>

namespace orvantile::platform::desktop {

void returnFreedMemory() {
    // The allocator would raise these by itself to the size of the largest picture so far. Most HUDs are
    // smaller than this, so that drawing one does not wait for new pages.
    constexpr int limit = 1 << 20; // bytes
    mallopt(M_MMAP_THRESHOLD, limit);
    mallopt(M_TRIM_THRESHOLD, limit);
}

} // namespace orvantile::platform::desktop
