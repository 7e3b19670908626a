#pragma once

#include <QPainter>

namespace orvantile {

/// The light and shade of glass, each painted over `area`, the capsule with its corners still on, from top to
/// bottom. `dark`: for the dark-backed rendering.
void paintSpecular(QPainter& painter, const QRectF& area);
void paintInnerShadow(QPainter& painter, const QRectF& area, bool dark);
void paintCatchLight(QPainter& painter, const QRectF& area, bool dark);

/// A line of one point along the inside of the capsule's edge.
void paintRimStroke(QPainter& painter, const QRectF& area, bool dark);

/// Cuts everything that has been painted to a capsule whose ends are full semicircles; antialiased.
void clipToCapsule(QPainter& painter, const QRectF& area);

/// Pure white or black at an opacity; what is not between 0 and 1 is moved there.
[[nodiscard]] QColor white(double opacity);
[[nodiscard]] QColor black(double opacity);

} // namespace orvantile
