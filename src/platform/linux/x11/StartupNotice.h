#pragma once

#include "platform/linux/x11/Atoms.h"

#include <QByteArray>

namespace orvantile::platform::x11 {

/// The message by which a program says that the launch called `identifier` is over, so that the desktop stops
/// showing that it is under way.
[[nodiscard]] QByteArray endOfStartup(const QByteArray& identifier);

/// Sends `text` to whoever follows launches on this server.
void broadcastStartupText(xcb_connection_t* connection, xcb_window_t root, const Atoms& atoms,
                          const QByteArray& text);

} // namespace orvantile::platform::x11
