#pragma once

#include <QImage>
#include <QPainter>
#include <QPointF>

namespace orvantile {

/// A soft black shadow. All lengths are in points; the painter's device has `scale` pixels per point.
struct DropShadow {
    double opacity = 0;
    double blurRadius = 22; ///< twice the standard deviation of the Gaussian
    QPointF offset{0, 10};  ///< y grows downwards

    /// Draws the shadow of an opaque capsule.
    void paint(QPainter& painter, const QRectF& capsule, double scale) const;

    /// Draws the shadow of a picture whose top left corner is at `position`: premultiplied ARGB32, `scale`
    /// as its device pixel ratio.
    void paint(QPainter& painter, QPointF position, const QImage& shape, double scale) const;

private:
    void paintBlurred(QPainter& painter, QPointF position, const QImage& shape) const;
};

} // namespace orvantile
