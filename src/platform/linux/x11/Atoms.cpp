#include "platform/linux/x11/Atoms.h"

#include "platform/linux/x11/Reply.h"

#include <string>
#include <utility>
#include <vector>

namespace orvantile::platform::x11 {

Atoms Atoms::intern(xcb_connection_t* connection, int screenNumber) {
    const std::vector<std::pair<xcb_atom_t Atoms::*, std::string>> names{
        {&Atoms::activeWindow, "_NET_ACTIVE_WINDOW"},
        {&Atoms::clientList, "_NET_CLIENT_LIST"},
        {&Atoms::workArea, "_NET_WORKAREA"},
        {&Atoms::gtkWorkAreas, "_GTK_WORKAREAS_D0"},
        {&Atoms::strutPartial, "_NET_WM_STRUT_PARTIAL"},
        {&Atoms::pid, "_NET_WM_PID"},
        {&Atoms::name, "_NET_WM_NAME"},
        {&Atoms::utf8String, "UTF8_STRING"},
        {&Atoms::state, "_NET_WM_STATE"},
        {&Atoms::stateModal, "_NET_WM_STATE_MODAL"},
        {&Atoms::stateAbove, "_NET_WM_STATE_ABOVE"},
        {&Atoms::stateSkipTaskbar, "_NET_WM_STATE_SKIP_TASKBAR"},
        {&Atoms::stateSkipPager, "_NET_WM_STATE_SKIP_PAGER"},
        {&Atoms::type, "_NET_WM_WINDOW_TYPE"},
        {&Atoms::typeDialog, "_NET_WM_WINDOW_TYPE_DIALOG"},
        {&Atoms::typeMenu, "_NET_WM_WINDOW_TYPE_MENU"},
        {&Atoms::typePopupMenu, "_NET_WM_WINDOW_TYPE_POPUP_MENU"},
        {&Atoms::typeDropdownMenu, "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"},
        {&Atoms::typeCombo, "_NET_WM_WINDOW_TYPE_COMBO"},
        {&Atoms::typeNormal, "_NET_WM_WINDOW_TYPE_NORMAL"},
        {&Atoms::typeNotification, "_NET_WM_WINDOW_TYPE_NOTIFICATION"},
        {&Atoms::compositor, "_NET_WM_CM_S" + std::to_string(screenNumber)},
        {&Atoms::blurBehind, "_KDE_NET_WM_BLUR_BEHIND_REGION"},
        {&Atoms::comptonShadow, "_COMPTON_SHADOW"},
        {&Atoms::accessibilityBus, "AT_SPI_BUS"},
        {&Atoms::userTime, "_NET_WM_USER_TIME"},
        {&Atoms::userTimeWindow, "_NET_WM_USER_TIME_WINDOW"},
        {&Atoms::startupInfo, "_NET_STARTUP_INFO"},
        {&Atoms::startupInfoBegin, "_NET_STARTUP_INFO_BEGIN"},
        {&Atoms::manager, "MANAGER"},
        {&Atoms::settingsManager, "_XSETTINGS_S" + std::to_string(screenNumber)},
        {&Atoms::sharedSettings, "_XSETTINGS_SETTINGS"},
        {&Atoms::gtkBusName, "_GTK_UNIQUE_BUS_NAME"},
        {&Atoms::gtkMenuBar, "_GTK_MENUBAR_OBJECT_PATH"},
        {&Atoms::gtkApplication, "_GTK_APPLICATION_OBJECT_PATH"},
        {&Atoms::gtkWindow, "_GTK_WINDOW_OBJECT_PATH"},
        {&Atoms::menuService, "_KDE_NET_WM_APPMENU_SERVICE_NAME"},
        {&Atoms::menuPath, "_KDE_NET_WM_APPMENU_OBJECT_PATH"},
    };
    std::vector<xcb_intern_atom_cookie_t> cookies;
    cookies.reserve(names.size());
    for (const auto& entry : names) {
        const auto& name = entry.second;
        cookies.push_back(
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str()));
    }
    Atoms atoms;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookies[i], nullptr));
        atoms.*(names[i].first) = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    return atoms;
}

} // namespace orvantile::platform::x11
