#include "preferences/controls/Drawing.h"

#include <QPaintDevice>
#include <algorithm>
#include <cmath>

namespace orvantile {

double hairline(const QPainter& painter) {
    const double scale = painter.device() != nullptr ? painter.device()->devicePixelRatioF() : 1.0;
    return std::max(1.0, std::floor(scale)) / scale;
}

void drawEdged(QPainter& painter, const QRectF& area, double radius, const QColor& fill, const QColor& edge) {
    const double width = hairline(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(area, radius, radius);
    if (edge.alpha() > 0) {
        const double inset = width / 2;
        painter.setPen(QPen(edge, width));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
    }
}

void drawFocusRing(QPainter& painter, const QRectF& area, double radius, const QColor& accent) {
    constexpr double width = 2;
    constexpr double gap = 1;
    constexpr double out = gap + width / 2;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(accent, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(-out, -out, out, out), radius + out, radius + out);
}

QColor mixed(const QColor& bottom, const QColor& top, double amount) {
    const auto part = static_cast<float>(std::clamp(amount, 0.0, 1.0));
    const auto channel = [part](float from, float to) { return from + (to - from) * part; };
    return QColor::fromRgbF(channel(bottom.redF(), top.redF()), channel(bottom.greenF(), top.greenF()),
                            channel(bottom.blueF(), top.blueF()), channel(bottom.alphaF(), top.alphaF()));
}

} // namespace orvantile
