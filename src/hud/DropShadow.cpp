#include "hud/DropShadow.h"

#include "hud/ShadowMask.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace orvantile {

void DropShadow::cast(QImage& canvas, const QRectF& capsule) const {
    // Fine detail does not survive the blur, so the capsule is drawn as coarse as the blur works.
    const double scale = canvas.devicePixelRatio();
    const double sigma = blurRadius / 2 * scale;
    const int coarseness = ShadowMask::coarsenessFor(sigma);
    const double coarse = scale / coarseness;
    const auto cells = [&](double length) { return static_cast<int>(std::ceil(length * coarse)); };
    QImage shape(cells(capsule.width()), cells(capsule.height()), QImage::Format_ARGB32_Premultiplied);
    shape.fill(Qt::transparent);
    QPainter painter(&shape);
    painter.scale(coarse, coarse);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const double radius = std::min(capsule.width(), capsule.height()) / 2;
    painter.drawRoundedRect(QRectF(QPointF(), capsule.size()), radius, radius);
    painter.end();
    ShadowMask(shape, sigma, coarseness).cast(canvas, (capsule.topLeft() + offset) * scale, opacity);
}

void DropShadow::cast(QImage& canvas, QPointF position, const QImage& shape) const {
    const double scale = canvas.devicePixelRatio();
    ShadowMask(shape, blurRadius / 2 * scale).cast(canvas, (position + offset) * scale, opacity);
}

} // namespace orvantile
