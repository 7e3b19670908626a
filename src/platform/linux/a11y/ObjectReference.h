#pragma once

#include <string>

namespace orvantile::platform::a11y {

/// An object on the accessibility bus.
struct ObjectReference {
    std::string name; ///< the unique bus name of its application
    std::string path;

    friend bool operator==(const ObjectReference&, const ObjectReference&) = default;
};

} // namespace orvantile::platform::a11y
