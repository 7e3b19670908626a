#pragma once

#include <QImage>
#include <QRect>
#include <QString>

namespace orvantile::test {

/// What is on the screen, or in a rectangle of it, in pixels. A null image when it cannot be had.
[[nodiscard]] QImage takeScreenshot(const QString& display, const QRect& part = {});

} // namespace orvantile::test
