#pragma once

// The protocol's header for C names a member with a keyword of C++.
#pragma GCC diagnostic push
#ifdef __clang__
#pragma GCC diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_ // NOLINT(cppcoreguidelines-macro-usage)
#include <xcb/xkb.h>
#undef explicit
#pragma GCC diagnostic pop
