#include "platform/linux/x11/SharedPixels.h"

#include <algorithm>
#include <bit>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace orvantile::platform::x11 {

bool sharesMemory(XConnection& connection) {
    const auto* extension = xcb_get_extension_data(connection.get(), &xcb_shm_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    const Reply<xcb_shm_query_version_reply_t> version(
        xcb_shm_query_version_reply(connection.get(), xcb_shm_query_version(connection.get()), nullptr));
    return version && std::pair(version->major_version, version->minor_version) >=
                          std::pair<std::uint16_t, std::uint16_t>(1, 2);
}

SharedPixels::SharedPixels(XConnection& connection_) : connection(connection_) {}

SharedPixels::~SharedPixels() {
    release();
}

void SharedPixels::release() {
    if (attached != 0) {
        xcb_shm_detach(connection.get(), attached);
        attached = 0;
    }
    if (memory != nullptr) {
        munmap(memory, capacity);
        memory = nullptr;
    }
    capacity = 0;
}

bool SharedPixels::reserve(std::size_t bytes) {
    if (bytes <= capacity) {
        return true;
    }
    release();
    constexpr std::size_t smallest = std::size_t{64} * 1024;
    const std::size_t size = std::bit_ceil(std::max(bytes, smallest));
    const int descriptor = memfd_create("orvantile-panel", MFD_CLOEXEC);
    if (descriptor < 0) {
        return false;
    }
    void* mapped = MAP_FAILED;
    if (ftruncate(descriptor, static_cast<off_t>(size)) == 0) {
        mapped = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    }
    if (mapped == MAP_FAILED) {
        close(descriptor);
        return false;
    }
    memory = static_cast<unsigned char*>(mapped);
    capacity = size;
    if (!sharesMemory(connection)) {
        close(descriptor);
        return true;
    }
    const auto segment = xcb_generate_id(connection.get());
    // The library closes the descriptor.
    const Reply<xcb_generic_error_t> error(xcb_request_check(
        connection.get(), xcb_shm_attach_fd_checked(connection.get(), segment, descriptor, 0)));
    if (!error && connection.isOpen()) {
        attached = segment;
    }
    return true;
}

} // namespace orvantile::platform::x11
