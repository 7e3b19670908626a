#include "platform/linux/x11/SettingsDecoder.h"

#include <cstddef>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto settings = orvantile::platform::x11::decodeSharedSettings({data, size});
    // Every setting takes at least the bytes of its frame, so nothing is made up.
    constexpr std::size_t header = 12;
    constexpr std::size_t frame = 12;
    if (settings && header + frame * settings->size() > size) {
        std::abort();
    }
    return 0;
}
