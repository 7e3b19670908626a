#pragma once

#include "settings/Settings.h"

#include <QString>
#include <optional>

namespace orvantile {

/// What the HUD says about an action: the shortcut, two blanks and the title, or the title alone. Absent
/// while the program is switched off.
[[nodiscard]] std::optional<QString>
actionLabel(const Settings& settings, const std::optional<QString>& shortcut, const QString& title);

} // namespace orvantile
