#include "render/Wallpapers.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>
#include <cmath>

namespace orvantile::test {
namespace {

void sky(QPainter& painter, const QSizeF& size, const QColor& top, const QColor& bottom) {
    QLinearGradient gradient(0, 0, 0, size.height());
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.fillRect(QRectF(QPointF(), size), gradient);
}

void glow(QPainter& painter, const QSizeF& size, QPointF centre, double radius, QColor color) {
    QRadialGradient gradient(centre, radius);
    gradient.setColorAt(0, color);
    color.setAlpha(0);
    gradient.setColorAt(1, color);
    painter.fillRect(QRectF(QPointF(), size), gradient);
}

void hills(QPainter& painter, const QSizeF& size, double level, double height, double phase,
           const QColor& color) {
    QPainterPath path(QPointF(0, size.height()));
    for (double x = 0; x <= size.width() + 4; x += 4) {
        path.lineTo(x, level * size.height() + height * std::sin(x / 130 + phase) +
                           height / 2 * std::sin(x / 47 + 2 * phase));
    }
    path.lineTo(size.width() + 4, size.height());
    painter.fillPath(path, color);
}

void papers(QPainter& painter, const QSizeF& size) {
    QRandomGenerator random(7);
    for (int i = 0; i < 90; ++i) {
        const QRectF sheet(random.bounded(size.width()) - 60, random.bounded(size.height()) - 40,
                           40 + random.bounded(150), 24 + random.bounded(90));
        painter.fillRect(
            sheet, QColor::fromHsv(random.bounded(360), 30 + random.bounded(110), 110 + random.bounded(145)));
        painter.setPen(QPen(QColor(0, 0, 0, 150), 1.6));
        for (double y = sheet.top() + 8; y < sheet.bottom() - 4; y += 7) {
            painter.drawLine(QPointF(sheet.left() + 6, y),
                             QPointF(sheet.right() - 6 - random.bounded(24), y));
        }
    }
}

} // namespace

QImage makeWallpaper(Wallpaper wallpaper, QSize points, double scale) {
    QImage image((QSizeF(points) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QSizeF size(points);
    switch (wallpaper) {
    case Wallpaper::bright:
        sky(painter, size, QColor(156, 205, 247), QColor(255, 226, 200));
        glow(painter, size, {size.width() * 0.7, size.height() * 0.3}, 260, QColor(255, 255, 240, 230));
        hills(painter, size, 0.68, 22, 0.4, QColor(150, 190, 190));
        hills(painter, size, 0.82, 18, 2.1, QColor(111, 168, 138));
        break;
    case Wallpaper::dark:
        sky(painter, size, QColor(14, 16, 38), QColor(61, 30, 84));
        glow(painter, size, {size.width() * 0.25, size.height() * 0.55}, 300, QColor(38, 98, 190, 190));
        glow(painter, size, {size.width() * 0.85, size.height() * 0.35}, 220, QColor(190, 54, 120, 150));
        hills(painter, size, 0.78, 24, 1.2, QColor(20, 16, 40));
        break;
    case Wallpaper::busy:
        sky(painter, size, QColor(230, 230, 235), QColor(190, 196, 210));
        papers(painter, size);
        break;
    }
    return image;
}

} // namespace orvantile::test
