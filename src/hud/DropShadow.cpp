#include "hud/DropShadow.h"

#include "hud/GaussianBlur.h"

#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

/// Turns a blurred shape into its shadow.
void blacken(QImage& image, double opacity) {
    const auto strength = static_cast<unsigned>(std::lround(std::clamp(opacity, 0.0, 1.0) * 65536));
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [strength](QRgb pixel) {
            return (((pixel >> 24U) * strength + 32768U) >> 16U) << 24U;
        });
    }
}

QImage transparentImage(const QSizeF& points, double scale) {
    const auto pixels = [&](double length) { return static_cast<int>(std::ceil(length * scale)); };
    QImage image(pixels(points.width()), pixels(points.height()), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

void DropShadow::paint(QPainter& painter, const QRectF& capsule, double scale) const {
    // Fine detail does not survive the blur, so the capsule is drawn as small as the blur works.
    const double margin = 1.5 * blurRadius;
    const double coarse = scale / gaussianBlurReduction(blurRadius / 2 * scale);
    auto shape = transparentImage(capsule.size() + QSizeF(2 * margin, 2 * margin), coarse);
    shape.setDevicePixelRatio(1); // painters ignore ratios below 1
    QPainter shapePainter(&shape);
    shapePainter.scale(coarse, coarse);
    shapePainter.setRenderHint(QPainter::Antialiasing);
    shapePainter.setPen(Qt::NoPen);
    shapePainter.setBrush(Qt::black);
    const double radius = std::min(capsule.width(), capsule.height()) / 2;
    shapePainter.drawRoundedRect(QRectF(QPointF(margin, margin), capsule.size()), radius, radius);
    shapePainter.end();
    shape.setDevicePixelRatio(coarse);
    paintBlurred(painter, capsule.topLeft() - QPointF(margin, margin), shape);
}

void DropShadow::paint(QPainter& painter, QPointF position, const QImage& shape, double scale) const {
    const double margin = std::ceil(1.5 * blurRadius * scale) / scale;
    auto padded = transparentImage(shape.deviceIndependentSize() + QSizeF(2 * margin, 2 * margin), scale);
    QPainter paddedPainter(&padded);
    paddedPainter.setCompositionMode(QPainter::CompositionMode_Source);
    paddedPainter.drawImage(QPointF(margin, margin), shape);
    paddedPainter.end();
    paintBlurred(painter, position - QPointF(margin, margin), padded);
}

void DropShadow::paintBlurred(QPainter& painter, QPointF position, const QImage& shape) const {
    auto shadow = gaussianBlurred(shape, blurRadius / 2 * shape.devicePixelRatio());
    blacken(shadow, opacity);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(position + offset, shadow.deviceIndependentSize()), shadow);
}

} // namespace orvantile
