#pragma once

#include <unistd.h>
#include <utility>

namespace orvantile::platform::desktop {

/// An open file, closed with this object.
class FileDescriptor {
public:
    FileDescriptor() = default;

    explicit FileDescriptor(int descriptor_) : descriptor(descriptor_) {}

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    FileDescriptor(FileDescriptor&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor, other.descriptor);
        return *this;
    }

    ~FileDescriptor() {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }

    [[nodiscard]] int get() const { return descriptor; }

    [[nodiscard]] bool isOpen() const { return descriptor >= 0; }

private:
    int descriptor = -1;
};

} // namespace orvantile::platform::desktop
