#include "platform/linux/helper/QtKeys.h"

#include <QChar>
#include <Qt>
#include <algorithm>
#include <array>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace orvantile::platform::helper {
namespace {

struct NamedKey {
    Qt::Key key;
    keys::KeySymbol symbol;
};

/// Keys that type nothing. Function keys are computed.
constexpr auto namedKeys = std::to_array<NamedKey>({
    {Qt::Key_Escape, XKB_KEY_Escape},
    {Qt::Key_Tab, XKB_KEY_Tab},
    {Qt::Key_Backtab, XKB_KEY_ISO_Left_Tab},
    {Qt::Key_Backspace, XKB_KEY_BackSpace},
    {Qt::Key_Return, XKB_KEY_Return},
    {Qt::Key_Enter, XKB_KEY_KP_Enter},
    {Qt::Key_Insert, XKB_KEY_Insert},
    {Qt::Key_Delete, XKB_KEY_Delete},
    {Qt::Key_Pause, XKB_KEY_Pause},
    {Qt::Key_Print, XKB_KEY_Print},
    {Qt::Key_SysReq, XKB_KEY_Sys_Req},
    {Qt::Key_Clear, XKB_KEY_Clear},
    {Qt::Key_Home, XKB_KEY_Home},
    {Qt::Key_End, XKB_KEY_End},
    {Qt::Key_Left, XKB_KEY_Left},
    {Qt::Key_Up, XKB_KEY_Up},
    {Qt::Key_Right, XKB_KEY_Right},
    {Qt::Key_Down, XKB_KEY_Down},
    {Qt::Key_PageUp, XKB_KEY_Page_Up},
    {Qt::Key_PageDown, XKB_KEY_Page_Down},
    {Qt::Key_CapsLock, XKB_KEY_Caps_Lock},
    {Qt::Key_NumLock, XKB_KEY_Num_Lock},
    {Qt::Key_ScrollLock, XKB_KEY_Scroll_Lock},
    {Qt::Key_Menu, XKB_KEY_Menu},
    {Qt::Key_Help, XKB_KEY_Help},
    {Qt::Key_Select, XKB_KEY_Select},
    {Qt::Key_Execute, XKB_KEY_Execute},
    {Qt::Key_Cancel, XKB_KEY_Cancel},
    {Qt::Key_Undo, XKB_KEY_Undo},
    {Qt::Key_Redo, XKB_KEY_Redo},
    {Qt::Key_Find, XKB_KEY_Find},
    {Qt::Key_Open, XKB_KEY_XF86Open},
    {Qt::Key_New, XKB_KEY_XF86New},
    {Qt::Key_Close, XKB_KEY_XF86Close},
    {Qt::Key_Save, XKB_KEY_XF86Save},
    {Qt::Key_Cut, XKB_KEY_XF86Cut},
    {Qt::Key_Copy, XKB_KEY_XF86Copy},
    {Qt::Key_Paste, XKB_KEY_XF86Paste},
    {Qt::Key_Search, XKB_KEY_XF86Search},
    {Qt::Key_Explorer, XKB_KEY_XF86Explorer},
    {Qt::Key_ZoomIn, XKB_KEY_XF86ZoomIn},
    {Qt::Key_ZoomOut, XKB_KEY_XF86ZoomOut},
    {Qt::Key_Back, XKB_KEY_XF86Back},
    {Qt::Key_Forward, XKB_KEY_XF86Forward},
    {Qt::Key_Stop, XKB_KEY_XF86Stop},
    {Qt::Key_Refresh, XKB_KEY_XF86Refresh},
    {Qt::Key_Reload, XKB_KEY_XF86Reload},
    {Qt::Key_HomePage, XKB_KEY_XF86HomePage},
    {Qt::Key_Favorites, XKB_KEY_XF86Favorites},
    {Qt::Key_LaunchMail, XKB_KEY_XF86Mail},
    {Qt::Key_WWW, XKB_KEY_XF86WWW},
    {Qt::Key_VolumeDown, XKB_KEY_XF86AudioLowerVolume},
    {Qt::Key_VolumeMute, XKB_KEY_XF86AudioMute},
    {Qt::Key_VolumeUp, XKB_KEY_XF86AudioRaiseVolume},
    {Qt::Key_MediaPlay, XKB_KEY_XF86AudioPlay},
    {Qt::Key_MediaPause, XKB_KEY_XF86AudioPause},
    {Qt::Key_MediaTogglePlayPause, XKB_KEY_XF86AudioPlay},
    {Qt::Key_MediaStop, XKB_KEY_XF86AudioStop},
    {Qt::Key_MediaPrevious, XKB_KEY_XF86AudioPrev},
    {Qt::Key_MediaNext, XKB_KEY_XF86AudioNext},
    {Qt::Key_MediaRecord, XKB_KEY_XF86AudioRecord},
    {Qt::Key_AudioRewind, XKB_KEY_XF86AudioRewind},
    {Qt::Key_AudioForward, XKB_KEY_XF86AudioForward},
    {Qt::Key_Dead_Grave, XKB_KEY_dead_grave},
    {Qt::Key_Dead_Acute, XKB_KEY_dead_acute},
    {Qt::Key_Dead_Circumflex, XKB_KEY_dead_circumflex},
    {Qt::Key_Dead_Tilde, XKB_KEY_dead_tilde},
    {Qt::Key_Dead_Diaeresis, XKB_KEY_dead_diaeresis},
});

std::optional<keys::KeySymbol> symbolOf(std::uint32_t key) {
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35) {
        return XKB_KEY_F1 + (key - Qt::Key_F1);
    }
    if (const auto* named = std::ranges::find(namedKeys, key, &NamedKey::key); named != namedKeys.end()) {
        return named->symbol;
    }
    // The others have the number of their upper-case character.
    if (key < Qt::Key_Space || key > QChar::LastValidCodePoint || QChar::isSurrogate(key)) {
        return std::nullopt;
    }
    const auto symbol = xkb_utf32_to_keysym(QChar::toLower(key));
    return symbol == XKB_KEY_NoSymbol ? std::nullopt : std::optional(symbol);
}

} // namespace

std::optional<keys::Accelerator> acceleratorOf(std::uint32_t combined) {
    const auto symbol = symbolOf(combined & ~static_cast<std::uint32_t>(Qt::KeyboardModifierMask));
    if (!symbol) {
        return std::nullopt;
    }
    return keys::Accelerator{{.control = (combined & Qt::ControlModifier) != 0,
                              .alt = (combined & Qt::AltModifier) != 0,
                              .shift = (combined & Qt::ShiftModifier) != 0,
                              .super = (combined & Qt::MetaModifier) != 0},
                             *symbol};
}

} // namespace orvantile::platform::helper
