#pragma once

#include "support/desktop/XConnection.h"

#include <QRect>
#include <QString>
#include <sys/types.h>

namespace orvantile::test {

/// A window on the screen, as it was when looked at.
struct Window {
    xcb_window_t handle = XCB_NONE;
    QString className; ///< the class part of WM_CLASS
    QString title;
    pid_t process = 0; ///< 0 when it does not say
    QRect frame;       ///< in pixels of the screen, without decoration
    bool mapped = false;
    bool overrideRedirect = false;
};

/// Looks at a window; without a handle when it has gone.
[[nodiscard]] Window lookAt(const XConnection& x, xcb_window_t handle);

/// The direct children of the root, lowest first.
[[nodiscard]] std::vector<xcb_window_t> rootChildren(const XConnection& x);

} // namespace orvantile::test
