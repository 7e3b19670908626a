#pragma once

#include <QFont>

namespace orvantile {

/// The user's own interface font, never smaller than settings are comfortably read at.
[[nodiscard]] QFont bodyFont();
[[nodiscard]] QFont headerFont();
[[nodiscard]] QFont footnoteFont();

} // namespace orvantile
