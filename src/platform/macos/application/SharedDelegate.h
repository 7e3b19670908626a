#pragma once

#include "platform/macos/application/AppDelegate.h"

// For Objective-C++ files only.
namespace orvantile::platform::macos {

/// The one delegate. The application object holds it weakly; this keeps it until the process ends.
[[nodiscard]] AppDelegate* sharedDelegate();

/// The application object, which must exist: without it the program stops.
[[nodiscard]] NSApplication* existingApplication();

} // namespace orvantile::platform::macos
