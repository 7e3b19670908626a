#pragma once

#include <QImage>

namespace orvantile::test {

/// Desktop-like pictures, the same at every run.
enum class Wallpaper { bright, dark, busy };

/// A picture of `points` at `scale` device pixels per point; its device pixel ratio is set.
[[nodiscard]] QImage makeWallpaper(Wallpaper wallpaper, QSize points, double scale);

} // namespace orvantile::test
