#include "preferences/controls/DigitsLabel.h"

#include "preferences/controls/Typography.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace orvantile {

DigitsLabel::DigitsLabel(int width, const QString& longest) {
    setFont(bodyFont());
    setTextFormat(Qt::PlainText);
    setFixedWidth(std::max(width, static_cast<int>(std::ceil(advance(longest)))));
}

void DigitsLabel::setNumber(const QString& number) {
    setText(number);
    setToolTip(advance(number) > width() ? number : QString());
}

double DigitsLabel::advance(QChar character) const {
    const QFontMetricsF metrics(font());
    if (!character.isDigit()) {
        return metrics.horizontalAdvance(character);
    }
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    }
    return widest;
}

double DigitsLabel::advance(const QString& number) const {
    double total = 0;
    for (const auto character : number) {
        total += advance(character);
    }
    return total;
}

void DigitsLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const auto number = text();
    if (advance(number) > width()) {
        painter.drawText(rect(), Qt::AlignRight | Qt::AlignVCenter | Qt::AlignAbsolute,
                         fontMetrics().elidedText(number, Qt::ElideRight, width()));
        return;
    }
    double x = layoutDirection() == Qt::RightToLeft ? 0 : width() - advance(number);
    for (const auto character : number) {
        const double cell = advance(character);
        painter.drawText(QRectF(x, 0, cell, height()), Qt::AlignCenter, QString(character));
        x += cell;
    }
}

} // namespace orvantile
