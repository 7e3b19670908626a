#pragma once

class QObject;

namespace orvantile::helper {

/// Whether the object, which is an action, lives in a menu.
[[nodiscard]] bool livesInMenu(const QObject& action);

} // namespace orvantile::helper
