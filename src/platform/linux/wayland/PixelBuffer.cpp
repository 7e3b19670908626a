#include "platform/linux/wayland/PixelBuffer.h"

#include "platform/linux/desktop/FileDescriptor.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <sys/mman.h>
#include <unistd.h>

namespace orvantile::platform::wayland {

PixelBuffer::PixelBuffer(wl_shm& shared_) : shared(shared_) {}

PixelBuffer::~PixelBuffer() {
    release();
}

void PixelBuffer::release() {
    buffer.reset();
    pool.reset();
    if (memory != nullptr) {
        munmap(memory, capacity);
        memory = nullptr;
    }
    capacity = 0;
    size = {};
}

bool PixelBuffer::reserve(std::size_t bytes) {
    if (bytes <= capacity) {
        return true;
    }
    release();
    constexpr std::size_t smallest = std::size_t{64} * 1024;
    const std::size_t wanted = std::bit_ceil(std::max(bytes, smallest));
    const desktop::FileDescriptor file(memfd_create("orvantile-panel", MFD_CLOEXEC));
    if (wanted > std::numeric_limits<std::int32_t>::max() || file.get() < 0 ||
        ftruncate(file.get(), static_cast<off_t>(wanted)) != 0) {
        return false;
    }
    void* mapped = mmap(nullptr, wanted, PROT_READ | PROT_WRITE, MAP_SHARED, file.get(), 0);
    if (mapped == MAP_FAILED) {
        return false;
    }
    memory = static_cast<unsigned char*>(mapped);
    capacity = wanted;
    pool.reset(wl_shm_create_pool(&shared, file.get(), static_cast<std::int32_t>(wanted)));
    return true;
}

bool PixelBuffer::fit(QSize size_) {
    if (buffer && size == size_) {
        return true;
    }
    const int stride = 4 * size_.width();
    if (!reserve(static_cast<std::size_t>(stride) * static_cast<std::size_t>(size_.height()))) {
        return false;
    }
    static constexpr wl_buffer_listener listener{.release = [](void* data, wl_buffer*) {
        auto& self = *static_cast<PixelBuffer*>(data);
        self.busy = false;
        if (self.onReleased) {
            self.onReleased();
        }
    }};
    size = size_;
    buffer.reset(wl_shm_pool_create_buffer(pool.get(), 0, size.width(), size.height(), stride,
                                           WL_SHM_FORMAT_ARGB8888));
    wl_buffer_add_listener(buffer.get(), &listener, this);
    return true;
}

QImage PixelBuffer::image() const {
    return QImage(memory, size.width(), size.height(), qsizetype{4} * size.width(),
                  QImage::Format_ARGB32_Premultiplied);
}

wl_buffer* PixelBuffer::send() {
    busy = true;
    return buffer.get();
}

} // namespace orvantile::platform::wayland
