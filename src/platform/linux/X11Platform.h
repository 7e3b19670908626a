#pragma once

#include "platform/Platform.h"
#include "platform/linux/session/DesktopSession.h"

#include <functional>
#include <memory>

namespace orvantile::platform {

/// Makes what tells of programs that are no clients of the X server, where it runs on another window system.
using NativeSession = std::function<std::unique_ptr<session::DesktopSession>(Scheduler&)>;

/// The peers for a desktop on an X server. What cannot be had is a peer that does nothing.
[[nodiscard]] std::unique_ptr<Platform> makeX11Platform(const NativeSession& native = {});

} // namespace orvantile::platform
