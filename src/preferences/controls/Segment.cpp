#include "preferences/controls/Segment.h"

#include "preferences/controls/Drawing.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/Typography.h"

#include <QPainter>
#include <algorithm>

namespace orvantile {
namespace {

constexpr int sidePadding = 14;

} // namespace

Segment::Segment(const QString& text) {
    setText(text);
    setFont(bodyFont());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize Segment::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * sidePadding,
            std::max(controlHeight, fontMetrics().height() + 6)};
}

bool Segment::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void Segment::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    auto used = font();
    used.setWeight(isChecked() ? QFont::Medium : QFont::Normal);
    painter.setFont(used);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setOpacity(isDown() ? 0.6 : 1);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    painter.setOpacity(1);
    if (isFocusVisible()) {
        // The ring lies inside, since neighbours are close.
        drawFocusRing(painter, QRectF(rect()).adjusted(3, 3, -3, -3), controlRadius - 3,
                      palette().color(QPalette::Highlight));
    }
}

} // namespace orvantile
