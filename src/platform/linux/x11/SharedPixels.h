#pragma once

#include "platform/linux/x11/XConnection.h"

#include <cstddef>
#include <xcb/shm.h>

namespace orvantile::platform::x11 {

/// Memory for pixels that the server reads and writes as well; private memory where it cannot, on a remote
/// display for one. Grows when it must and never shrinks. Main thread only.
class SharedPixels {
public:
    explicit SharedPixels(XConnection& connection);
    SharedPixels(const SharedPixels&) = delete;
    SharedPixels& operator=(const SharedPixels&) = delete;
    ~SharedPixels();

    /// Makes room for so many bytes, which may wait for the server once. What was there is lost. False when
    /// memory is short.
    bool reserve(std::size_t bytes);

    [[nodiscard]] unsigned char* bytes() const { return memory; }

    /// 0 while the memory is private.
    [[nodiscard]] xcb_shm_seg_t segment() const { return attached; }

private:
    void release();

    XConnection& connection;
    unsigned char* memory = nullptr; ///< mapped
    std::size_t capacity = 0;
    xcb_shm_seg_t attached = 0;
};

/// Whether the server shares memory by descriptor; asked once per connection.
[[nodiscard]] bool sharesMemory(XConnection& connection);

} // namespace orvantile::platform::x11
