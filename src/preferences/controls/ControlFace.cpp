#include "preferences/controls/ControlFace.h"

#include "preferences/controls/Drawing.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/FormPalette.h"

namespace orvantile {

QRectF controlFace(const QRectF& area) {
    return area.adjusted(focusMargin, focusMargin, -focusMargin, -focusMargin);
}

void drawControlFace(QPainter& painter, const QWidget& control, const QRectF& face, bool down, bool hovered) {
    const bool dark = isDark(control.palette());
    auto fill = control.palette().color(QPalette::Button);
    if (!control.isEnabled()) {
        fill = mixed(fill, control.palette().color(QPalette::Base), 0.6);
    } else if (down) {
        fill = mixed(fill, dark ? Qt::white : Qt::black, 0.12);
    } else if (hovered) {
        fill = mixed(fill, dark ? Qt::white : Qt::black, dark ? 0.06 : 0.03);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    if (control.isEnabled()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0, 0, 0, dark ? 60 : 22));
        painter.drawRoundedRect(face.translated(0, 1), controlRadius, controlRadius);
    }
    drawEdged(painter, face, controlRadius, fill, dark ? QColor(255, 255, 255, 26) : QColor(0, 0, 0, 38));
}

} // namespace orvantile
