#pragma once

#include <unistd.h>
#include <utility>

namespace orvantile::test {

/// Owns a file descriptor.
class FileDescriptor {
public:
    FileDescriptor() = default;

    explicit FileDescriptor(int descriptor_) : descriptor(descriptor_) {}

    FileDescriptor(FileDescriptor&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor, other.descriptor);
        return *this;
    }

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    ~FileDescriptor() {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }

    [[nodiscard]] int get() const { return descriptor; }

private:
    int descriptor = -1;
};

} // namespace orvantile::test
