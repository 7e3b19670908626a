#include "platform/linux/x11/MenuTypes.h"

#include <algorithm>

namespace orvantile::platform::x11 {

bool isMenu(std::span<const xcb_atom_t> types, const Atoms& atoms) {
    if (types.size() == 1 && types.front() == atoms.typeNormal) {
        return true;
    }
    return std::ranges::any_of(types, [&](xcb_atom_t type) {
        return type == atoms.typeMenu || type == atoms.typePopupMenu || type == atoms.typeDropdownMenu ||
               type == atoms.typeCombo;
    });
}

} // namespace orvantile::platform::x11
