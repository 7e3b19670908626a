#pragma once

#include <QString>

namespace orvantile::platform::desktop {

/// Whether a theme calls itself dark: "Adwaita-dark", "Arc-Dark", "Yaru-blue-dark-hdpi", but not
/// "Arc-Darker", which is light with dark headers.
[[nodiscard]] bool isDarkThemeName(const QString& name);

} // namespace orvantile::platform::desktop
