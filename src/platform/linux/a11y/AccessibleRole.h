#pragma once

#include <cstdint>

namespace orvantile::platform::a11y {

/// The roles that matter here, as AT-SPI numbers them (AtspiRole).
enum class AccessibleRole : std::uint32_t {
    alert = 2,
    checkMenuItem = 8,
    dialog = 16,
    fileChooser = 19,
    filler = 20,
    fontChooser = 21,
    frame = 23,
    internalFrame = 28,
    layeredPane = 31,
    menu = 33,
    menuBar = 34,
    menuItem = 35,
    panel = 39,
    radioMenuItem = 45,
    rootPane = 46,
    scrollPane = 49,
    toolBar = 63,
    viewport = 68,
    window = 69,
};

/// The states that matter here, as AT-SPI numbers them (AtspiStateType).
enum class AccessibleState : unsigned { active = 1, enabled = 8, modal = 16, sensitive = 24, showing = 25 };

} // namespace orvantile::platform::a11y
