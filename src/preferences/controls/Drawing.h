#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace orvantile {

/// The width of the thinnest crisp line: whole device pixels, about one point.
[[nodiscard]] double hairline(const QPainter& painter);

/// A rounded rectangle whose edge lies inside `area`.
void drawEdged(QPainter& painter, const QRectF& area, double radius, const QColor& fill, const QColor& edge);

/// The same for areas much larger than their corners, many times faster.
void drawEdgedCard(QPainter& painter, const QRectF& area, double radius, const QColor& fill,
                   const QColor& edge);

/// The mark of the control that the keyboard speaks to, just outside `area`.
void drawFocusRing(QPainter& painter, const QRectF& area, double radius, const QColor& accent);

/// `top` over `bottom` at `amount` (0 to 1).
[[nodiscard]] QColor mixed(const QColor& bottom, const QColor& top, double amount);

} // namespace orvantile
