#pragma once

#include <string>

namespace orvantile::platform::session {

/// Where on the session bus a window exports its menus and actions; empty where it says nothing.
struct WindowObjects {
    /// As GTK's windows tell, for org.gtk.Menus and org.gtk.Actions.
    std::string gtkBusName;
    std::string gtkMenuBar;
    std::string gtkApplication; ///< actions of the application
    std::string gtkWindow;      ///< actions of the window

    /// As the KDE desktop has it told, for com.canonical.dbusmenu.
    std::string menuService;
    std::string menuPath;

    friend bool operator==(const WindowObjects&, const WindowObjects&) = default;
};

} // namespace orvantile::platform::session
