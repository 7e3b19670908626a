#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <QString>
#include <optional>
#include <vector>

namespace orvantile::platform::helper {

/// A command of a menu that a shortcut has fired.
struct FiredCommand {
    QString title;                       ///< as menus show it; may be empty
    std::vector<keys::Accelerator> keys; ///< what was pressed, one after the other; empty when it has no name
    bool enabled = false;

    friend bool operator==(const FiredCommand&, const FiredCommand&) = default;
};

/// What a program with the helper in it has told.
struct HelperReport {
    int openMenus = 0; ///< how many of its menus are open now
    std::optional<FiredCommand> command{};

    friend bool operator==(const HelperReport&, const HelperReport&) = default;
};

} // namespace orvantile::platform::helper
