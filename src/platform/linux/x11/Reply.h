#pragma once

#include <cstdlib>
#include <memory>

namespace orvantile::platform::x11 {

/// Gives back memory that the X library has allocated.
struct FreeMemory {
    void operator()(void* memory) const noexcept {
        std::free(memory); // NOLINT(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    }
};

/// A reply, event or error of the X library; null when the request failed.
template <typename Type>
using Reply = std::unique_ptr<Type, FreeMemory>;

} // namespace orvantile::platform::x11
