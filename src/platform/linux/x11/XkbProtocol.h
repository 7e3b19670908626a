#pragma once

// The protocol's header for C names a member with a keyword of C++.
#define explicit explicit_ // NOLINT(cppcoreguidelines-macro-usage)
#include <xcb/xkb.h>
#undef explicit
