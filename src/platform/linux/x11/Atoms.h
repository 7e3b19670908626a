#pragma once

#include <xcb/xcb.h>

namespace orvantile::platform::x11 {

/// The names of properties and values that are used, as the server numbers them.
struct Atoms {
    xcb_atom_t activeWindow = 0;
    xcb_atom_t clientList = 0;
    xcb_atom_t workArea = 0;
    xcb_atom_t gtkWorkAreas = 0; ///< per monitor, of the first desktop
    xcb_atom_t strutPartial = 0;
    xcb_atom_t pid = 0;
    xcb_atom_t name = 0;
    xcb_atom_t utf8String = 0;
    xcb_atom_t state = 0;
    xcb_atom_t stateModal = 0;
    xcb_atom_t stateAbove = 0;
    xcb_atom_t stateSkipTaskbar = 0;
    xcb_atom_t stateSkipPager = 0;
    xcb_atom_t type = 0;
    xcb_atom_t typeDialog = 0;
    xcb_atom_t typeMenu = 0;
    xcb_atom_t typePopupMenu = 0;
    xcb_atom_t typeDropdownMenu = 0;
    xcb_atom_t typeCombo = 0;
    xcb_atom_t typeNormal = 0;
    xcb_atom_t typeNotification = 0;
    xcb_atom_t compositor = 0; ///< the selection that the compositing manager owns
    xcb_atom_t blurBehind = 0;
    xcb_atom_t comptonShadow = 0;
    xcb_atom_t accessibilityBus = 0;
    xcb_atom_t userTime = 0; ///< of the user's last action in a window
    xcb_atom_t userTimeWindow = 0;
    xcb_atom_t startupInfo = 0;
    xcb_atom_t startupInfoBegin = 0;
    xcb_atom_t manager = 0;         ///< the message that announces the owner of a selection
    xcb_atom_t settingsManager = 0; ///< the selection that the settings manager owns
    xcb_atom_t sharedSettings = 0;
    xcb_atom_t gtkBusName = 0; ///< where a window exports its menus and actions
    xcb_atom_t gtkMenuBar = 0;
    xcb_atom_t gtkApplication = 0;
    xcb_atom_t gtkWindow = 0;
    xcb_atom_t menuService = 0;
    xcb_atom_t menuPath = 0;

    /// Asks the server for all of them in one round trip. What cannot be had is 0.
    [[nodiscard]] static Atoms intern(xcb_connection_t* connection, int screenNumber);
};

} // namespace orvantile::platform::x11
