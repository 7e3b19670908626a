#pragma once

#include "platform/linux/wayland/Handle.h"

#include <QImage>
#include <QSize>
#include <cstddef>
#include <functional>

namespace orvantile::platform::wayland {

/// A picture in memory that the compositor reads as well. The memory grows when it must and never shrinks.
class PixelBuffer {
public:
    explicit PixelBuffer(wl_shm& memory);
    PixelBuffer(const PixelBuffer&) = delete;
    PixelBuffer& operator=(const PixelBuffer&) = delete;
    ~PixelBuffer();

    /// Whether the compositor still reads it.
    [[nodiscard]] bool isBusy() const { return busy; }

    /// Makes it a picture of that size in device pixels, with any content. False when memory is short. Not
    /// while it is busy.
    [[nodiscard]] bool fit(QSize size);

    /// Premultiplied ARGB32; valid until the next `fit`.
    [[nodiscard]] QImage image() const;

    /// Hands it over: busy until the compositor releases it.
    [[nodiscard]] wl_buffer* send();

    std::function<void()> onReleased;

private:
    [[nodiscard]] bool reserve(std::size_t bytes);
    void release();

    wl_shm& shared;
    unsigned char* memory = nullptr; ///< mapped
    std::size_t capacity = 0;
    Handle<wl_shm_pool> pool;
    Handle<wl_buffer> buffer;
    QSize size;
    bool busy = false;
};

} // namespace orvantile::platform::wayland
