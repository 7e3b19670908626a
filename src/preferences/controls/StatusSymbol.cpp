#include "preferences/controls/StatusSymbol.h"

#include "preferences/controls/FormPalette.h"

#include <QPainter>
#include <QPainterPath>

namespace orvantile {
namespace {

constexpr int side = 18;

void drawCheckMark(QPainter& painter, const QColor& colour) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QRectF(1, 1, 16, 16));
    QPainterPath mark;
    mark.moveTo(5.4, 9.3);
    mark.lineTo(7.9, 11.9);
    mark.lineTo(12.6, 6.2);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(mark);
}

void drawWarning(QPainter& painter, const QColor& colour) {
    QPainterPath triangle;
    triangle.moveTo(9, 2.6);
    triangle.lineTo(16.2, 15.2);
    triangle.lineTo(1.8, 15.2);
    triangle.closeSubpath();
    painter.setBrush(colour);
    painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(triangle);
    painter.setPen(QPen(Qt::white, 1.7, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(9, 6.6), QPointF(9, 10.2));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(9, 13), 1.05, 1.05);
}

} // namespace

StatusSymbol::StatusSymbol() {
    setFixedSize(side, side);
}

void StatusSymbol::setGood(bool good_) {
    good = good_;
    update();
}

void StatusSymbol::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool dark = isDark(palette());
    if (good) {
        drawCheckMark(painter, dark ? QColor(0x32, 0xb8, 0x5c) : QColor(0x27, 0xa3, 0x4b));
    } else {
        drawWarning(painter, dark ? QColor(0xf0, 0x92, 0x1e) : QColor(0xe8, 0x80, 0x0c));
    }
}

} // namespace orvantile
