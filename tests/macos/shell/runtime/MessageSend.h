#pragma once

#include "macos/shell/runtime/Abi.h"

namespace orvantile::test::objc {

/// The arguments of a message as the calling convention of x86-64 leaves them.
struct Arguments {
    const std::uint64_t* integers; ///< the registers behind receiver and selector
    int integerCount;
    const double* vectors; ///< eight registers, sixteen bytes apart
    const std::uint64_t* stack;
};

/// Called for every message that the code under test sends, before it is delivered.
void messageSent(const Object* receiver, const Class* implementedBy, const Method& method,
                 const Arguments& arguments);

} // namespace orvantile::test::objc
