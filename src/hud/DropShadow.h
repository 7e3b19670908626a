#pragma once

#include <QImage>
#include <QPointF>
#include <QRectF>

namespace orvantile {

/// A soft black shadow. All lengths are in points; the canvas says by its device pixel ratio how many pixels
/// a point has. `canvas`: premultiplied ARGB32; overwritten completely, so the shadow comes first.
struct DropShadow {
    double opacity = 0;
    double blurRadius = 22; ///< twice the standard deviation of the Gaussian
    QPointF offset{0, 10};  ///< y grows downwards

    /// Draws the shadow of an opaque capsule.
    void cast(QImage& canvas, const QRectF& capsule) const;

    /// Draws the shadow of a picture whose top left corner is at `position`: premultiplied ARGB32, as fine as
    /// the canvas.
    void cast(QImage& canvas, QPointF position, const QImage& shape) const;
};

} // namespace orvantile
