#include "preferences/PreviewBackdrop.h"

#include "preferences/DesktopBackground.h"

#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr double keptPixels = 4e6; // a picture larger than this is scaled anew each time

QImage softened(const QImage& picture) {
    const auto tiny = picture.scaledToWidth(std::max(1, picture.width() / 48), Qt::SmoothTransformation);
    return tiny.scaled(picture.size() / 4, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

} // namespace

void PreviewBackdrop::load(bool darkCapsule) {
    if (loaded == darkCapsule) {
        return;
    }
    loaded = darkCapsule;
    picture = DesktopBackground{darkCapsule}.picture().value_or(QImage());
    picture.convertTo(QImage::Format_RGB32);
    blurred = picture.isNull() ? QImage() : softened(picture);
    scaled = QImage();
}

QRectF PreviewBackdrop::filling(const QSizeF& size) const {
    const auto whole = QSizeF(picture.size()).scaled(size, Qt::KeepAspectRatioByExpanding);
    return {(size.width() - whole.width()) / 2, (size.height() - whole.height()) / 2, whole.width(),
            whole.height()};
}

void PreviewBackdrop::paint(QPainter& painter, const QSizeF& size, bool darkCapsule, const QColor& fallback) {
    load(darkCapsule);
    plain = fallback;
    if (picture.isNull()) {
        painter.fillRect(QRectF(QPointF(), size), fallback);
        return;
    }
    area = filling(size);
    const double scale = painter.device()->devicePixelRatioF();
    const QSize device(static_cast<int>(std::lround(area.width() * scale)),
                       static_cast<int>(std::lround(area.height() * scale)));
    if (double{1} * device.width() * device.height() > keptPixels) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(area, picture);
        return;
    }
    if (scaled.size() != device) {
        scaled = picture.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        scaled.setDevicePixelRatio(scale);
    }
    const QPointF corner(std::round(area.x() * scale) / scale, std::round(area.y() * scale) / scale);
    painter.drawImage(corner, scaled);
}

QImage PreviewBackdrop::blurredBehind(const QRectF& place, double scale) const {
    QImage image(static_cast<int>(std::ceil(place.width() * scale)),
                 static_cast<int>(std::ceil(place.height() * scale)), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(plain);
    if (!blurred.isNull()) {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(area.translated(-place.topLeft()), blurred);
    }
    return image;
}

} // namespace orvantile
