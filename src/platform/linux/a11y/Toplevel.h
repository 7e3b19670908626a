#pragma once

#include "platform/linux/session/DesktopSession.h"

#include <QString>
#include <span>
#include <string>

namespace orvantile::platform::a11y {

/// A window of an application as the accessibility bus knows it.
struct Toplevel {
    std::string path;
    QString title;       ///< trimmed
    bool main = false;   ///< a window that has menus of its own: neither dialog nor popup
    bool dialog = false; ///< by its role or because it is modal
    bool active = false; ///< whether the application says that it has the focus
};

/// Which of an application's windows the focused one is, and how sure that is.
struct ToplevelChoice {
    const Toplevel* toplevel = nullptr; ///< null when it cannot be told
    bool certain = false;               ///< worth remembering
};

/// Tells by the title, then by what the application says about its focus, then by there being only one.
[[nodiscard]] ToplevelChoice chooseToplevel(std::span<const Toplevel> toplevels,
                                            const session::ActiveWindow& window);

} // namespace orvantile::platform::a11y
