#pragma once

#include <QString>

namespace orvantile::test {

/// Paints the root window of the display with a calm picture that stays when this process goes.
void paintWallpaper(const QString& display);

} // namespace orvantile::test
