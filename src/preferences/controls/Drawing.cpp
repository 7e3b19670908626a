#include "preferences/controls/Drawing.h"

#include <QImage>
#include <QPaintDevice>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

/// Whether the edges lie between device pixels.
bool isAligned(const QRectF& area, double scale) {
    const auto whole = [scale](double edge) {
        return std::abs(edge * scale - std::round(edge * scale)) < 1e-6;
    };
    return whole(area.left()) && whole(area.top()) && whole(area.right()) && whole(area.bottom());
}

} // namespace

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

void drawEdgedCard(QPainter& painter, const QRectF& area, double radius, const QColor& fill,
                   const QColor& edge) {
    const double scale = painter.device()->devicePixelRatioF();
    const int corner = static_cast<int>(std::ceil(radius * scale)) + 1; // pixels
    const double size = corner / scale;
    if (!isAligned(area, scale) || area.width() < 2 * size || area.height() < 2 * size) {
        drawEdged(painter, area, radius, fill, edge);
        return;
    }
    // The corners are those of a small card.
    QImage small(2 * corner, 2 * corner, QImage::Format_ARGB32_Premultiplied);
    small.setDevicePixelRatio(scale);
    small.fill(Qt::transparent);
    QPainter smallPainter(&small);
    drawEdged(smallPainter, QRectF(0, 0, 2 * size, 2 * size), radius, fill, edge);
    smallPainter.end();
    for (const bool right : {false, true}) {
        for (const bool bottom : {false, true}) {
            painter.drawImage(QPointF(right ? area.right() - size : area.left(),
                                      bottom ? area.bottom() - size : area.top()),
                              small, QRect(right ? corner : 0, bottom ? corner : 0, corner, corner));
        }
    }

    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(area.adjusted(size, 0, -size, 0), fill);
    painter.fillRect(QRectF(area.left(), area.top() + size, size, area.height() - 2 * size), fill);
    painter.fillRect(QRectF(area.right() - size, area.top() + size, size, area.height() - 2 * size), fill);
    const double width = hairline(painter);
    painter.fillRect(QRectF(area.left() + size, area.top(), area.width() - 2 * size, width), edge);
    painter.fillRect(QRectF(area.left() + size, area.bottom() - width, area.width() - 2 * size, width), edge);
    painter.fillRect(QRectF(area.left(), area.top() + size, width, area.height() - 2 * size), edge);
    painter.fillRect(QRectF(area.right() - width, area.top() + size, width, area.height() - 2 * size), edge);
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
