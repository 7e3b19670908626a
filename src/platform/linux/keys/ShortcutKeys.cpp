#include "platform/linux/keys/ShortcutKeys.h"

#include <algorithm>
#include <array>
#include <utility>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::keys {
namespace {

using SymbolRange = std::pair<KeySymbol, KeySymbol>;

constexpr std::array functionAndNavigation{
    SymbolRange{XKB_KEY_ISO_Left_Tab, XKB_KEY_ISO_Left_Tab},
    SymbolRange{XKB_KEY_BackSpace, XKB_KEY_Tab},
    SymbolRange{XKB_KEY_Return, XKB_KEY_Return},
    SymbolRange{XKB_KEY_Pause, XKB_KEY_Sys_Req},
    SymbolRange{XKB_KEY_Escape, XKB_KEY_Escape},
    SymbolRange{XKB_KEY_Home, XKB_KEY_Begin},
    SymbolRange{XKB_KEY_Select, XKB_KEY_Break},
    SymbolRange{XKB_KEY_KP_Tab, XKB_KEY_KP_Delete}, // with the number lock off
    SymbolRange{XKB_KEY_F1, XKB_KEY_F35},
    SymbolRange{XKB_KEY_Delete, XKB_KEY_Delete},
};

constexpr SymbolRange media{0x10081000, 0x1008ffff};

constexpr std::array modifiers{
    SymbolRange{XKB_KEY_ISO_Lock, XKB_KEY_ISO_Level5_Lock},
    SymbolRange{XKB_KEY_Mode_switch, XKB_KEY_Num_Lock},
    SymbolRange{XKB_KEY_Shift_L, XKB_KEY_Hyper_R},
};

bool contains(const SymbolRange& range, KeySymbol symbol) {
    return symbol >= range.first && symbol <= range.second;
}

bool isIn(const auto& ranges, KeySymbol symbol) {
    return std::ranges::any_of(ranges, [&](const SymbolRange& range) { return contains(range, symbol); });
}

} // namespace

bool isModifierKey(KeySymbol symbol) {
    return symbol == XKB_KEY_NoSymbol || isIn(modifiers, symbol);
}

bool isFunctionOrNavigationKey(KeySymbol symbol) {
    return isIn(functionAndNavigation, symbol) || contains(media, symbol);
}

std::vector<KeySymbol> functionAndNavigationKeys() {
    std::vector<KeySymbol> symbols;
    for (const auto& [first, last] : functionAndNavigation) {
        for (auto symbol = first; symbol <= last; ++symbol) {
            symbols.push_back(symbol);
        }
    }
    return symbols;
}

} // namespace orvantile::platform::keys
