#include "preferences/controls/Divider.h"

#include "preferences/controls/Drawing.h"

#include <QPainter>

namespace orvantile {

Divider::Divider() {
    setFixedHeight(1);
}

void Divider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const double line = hairline(painter);
    painter.fillRect(QRectF(0, height() - line, width(), line), palette().color(QPalette::Mid));
}

} // namespace orvantile
