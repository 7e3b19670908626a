#include "platform/linux/desktop/PanelComposer.h"

#include <QPainter>

namespace orvantile::platform::desktop {

void composePanel(QImage& target, const PanelFrame& frame, QSize panel, QPoint origin,
                  const QImage& beneath) {
    QPainter painter(&target);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (beneath.isNull()) {
        painter.fillRect(target.rect(), Qt::transparent);
    } else {
        painter.drawImage(0, 0, beneath);
    }
    if (frame.image.isNull() || frame.opacity <= 0) {
        return;
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setOpacity(frame.opacity);
    const QSizeF size(frame.image.size());
    painter.translate(-origin);
    if (frame.scale != 1) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.translate(panel.width() / 2.0, panel.height() / 2.0);
        painter.scale(frame.scale, frame.scale);
        painter.translate(panel.width() / -2.0, panel.height() / -2.0);
    }
    painter.drawImage(QRectF(frame.origin, size), frame.image);
}

} // namespace orvantile::platform::desktop
