#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <utility>

namespace orvantile::platform::macos {

/// Owns one reference to a Core Foundation object, or none. `Reference` is the object's reference type, such
/// as `CFStringRef`.
template <typename Reference>
class CfHandle {
public:
    CfHandle() = default;

    /// Takes over a reference that the caller owns, from a function named Create or Copy.
    [[nodiscard]] static CfHandle adopt(Reference owned) {
        CfHandle handle;
        handle.reference = owned;
        return handle;
    }

    /// Adds a reference to an object that is only borrowed, from a function named Get or the argument of a
    /// callback.
    [[nodiscard]] static CfHandle retain(Reference borrowed) {
        if (borrowed != nullptr) {
            CFRetain(borrowed);
        }
        return adopt(borrowed);
    }

    CfHandle(CfHandle&& other) noexcept : reference(std::exchange(other.reference, nullptr)) {}

    CfHandle& operator=(CfHandle&& other) noexcept {
        // Swapping leaves the former object to `other`, which releases it; assigning itself is harmless.
        std::swap(reference, other.reference);
        return *this;
    }

    CfHandle(const CfHandle&) = delete;
    CfHandle& operator=(const CfHandle&) = delete;

    ~CfHandle() {
        if (reference != nullptr) {
            CFRelease(reference);
        }
    }

    /// Borrows the object for the life of this handle; null when there is none.
    [[nodiscard]] Reference get() const { return reference; }

    [[nodiscard]] explicit operator bool() const { return reference != nullptr; }

private:
    Reference reference = nullptr;
};

} // namespace orvantile::platform::macos
