#pragma once

#include "platform/linux/x11/XConnection.h"

#include <QString>
#include <functional>

namespace orvantile::platform::x11 {

/// Makes an identifier that lets the window of another program come to the front as if the user had opened it
/// from `window`: it carries the time of the user's last action there. Empty when the window tells none.
void askStartupIdentifier(XConnection& connection, xcb_window_t window,
                          std::function<void(const QString&)> answer);

} // namespace orvantile::platform::x11
