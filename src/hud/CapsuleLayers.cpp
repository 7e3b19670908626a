#include "hud/CapsuleLayers.h"

#include <QImage>
#include <QLinearGradient>
#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace orvantile {
namespace {

struct Stop {
    QColor color;
    double location; ///< 0 at the top, 1 at the bottom
};

using Stops = std::initializer_list<Stop>;

QColor grey(int level, double opacity) {
    QColor color(level, level, level);
    color.setAlphaF(std::isnan(opacity) ? 0 : static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
    return color;
}

QLinearGradient vertical(const QRectF& area, Stops stops) {
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    for (const auto& stop : stops) {
        gradient.setColorAt(stop.location, stop.color);
    }
    return gradient;
}

/// Paints where the gradient is not transparent anyway.
void fill(QPainter& painter, const QRectF& area, double from, double to, Stops stops) {
    const QRectF band(area.left(), area.top() + from * area.height(), area.width(),
                      (to - from) * area.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRectF(band.toAlignedRect()) & area, vertical(area, stops));
    painter.restore();
}

double radiusOf(const QRectF& area) {
    return std::min(area.width(), area.height()) / 2;
}

} // namespace

QColor white(double opacity) {
    return grey(255, opacity);
}

QColor black(double opacity) {
    return grey(0, opacity);
}

void paintSpecular(QPainter& painter, const QRectF& area) {
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    fill(painter, area, 0, 0.3, {{white(0.32), 0}, {white(0.1), 0.1}, {white(0), 0.3}});
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void paintInnerShadow(QPainter& painter, const QRectF& area, bool dark) {
    fill(painter, area, 0.18, 0.5, {{black(0), 0.18}, {black(dark ? 0.25 : 0.14), 0.34}, {black(0), 0.5}});
}

void paintCatchLight(QPainter& painter, const QRectF& area, bool dark) {
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    fill(painter, area, 0.65, 1, {{white(0), 0.65}, {white(dark ? 0.18 : 0.08), 1}});
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void paintRimStroke(QPainter& painter, const QRectF& area, bool dark) {
    constexpr double width = 1;
    const auto line = area.adjusted(width / 2, width / 2, -width / 2, -width / 2);
    const auto gradient = dark ? vertical(area, {{white(0.28), 0}, {white(0.06), 0.5}, {white(0.3), 1}})
                               : vertical(area, {{black(0.22), 0}, {black(0.04), 0.5}, {black(0.16), 1}});
    QPen pen(gradient, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.drawRoundedRect(line, radiusOf(line), radiusOf(line));
    painter.restore();
}

void clipToCapsule(QPainter& painter, const QRectF& area) {
    // Clip paths have jagged edges, so the picture is multiplied with the capsule's coverage.
    const double scale = painter.device()->devicePixelRatioF();
    const double radius = radiusOf(area);
    const auto cut = [&](const QRectF& part) {
        const QSize pixels(static_cast<int>(std::ceil(part.width() * scale)),
                           static_cast<int>(std::ceil(part.height() * scale)));
        QImage mask(pixels, QImage::Format_ARGB32_Premultiplied);
        mask.setDevicePixelRatio(scale);
        mask.fill(Qt::transparent);
        QPainter maskPainter(&mask);
        maskPainter.setRenderHint(QPainter::Antialiasing);
        maskPainter.setPen(Qt::NoPen);
        maskPainter.setBrush(Qt::black);
        maskPainter.translate(-part.topLeft());
        maskPainter.drawRoundedRect(area, radius, radius);
        maskPainter.end();
        painter.drawImage(part.topLeft(), mask);
    };
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    const double end = std::ceil((radius + 1) * scale) / scale;
    if (area.width() > 2 * end) {
        // Only the ends are round.
        cut({area.left(), area.top(), end, area.height()});
        cut({area.right() - end, area.top(), end, area.height()});
    } else {
        cut(area);
    }
    painter.restore();
}

} // namespace orvantile
