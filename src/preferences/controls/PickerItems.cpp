#include "preferences/controls/PickerItems.h"

#include "preferences/controls/FormMetrics.h"

#include <QComboBox>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace orvantile {
namespace {

constexpr int itemHeight = 26;
constexpr int markRoom = 26;
constexpr int trailingPadding = PickerItems::extraWidth - markRoom;

bool isChosen(const QStyleOptionViewItem& option, const QModelIndex& index) {
    for (const QObject* each = option.widget; each != nullptr; each = each->parent()) {
        if (const auto* picker = qobject_cast<const QComboBox*>(each)) {
            return picker->currentIndex() == index.row();
        }
    }
    return false;
}

void drawMark(QPainter& painter, const QPointF& centre, const QColor& colour) {
    QPainterPath mark;
    mark.moveTo(centre + QPointF(-4, 0.2));
    mark.lineTo(centre + QPointF(-1.2, 3.2));
    mark.lineTo(centre + QPointF(4, -3.4));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(mark);
}

} // namespace

void PickerItems::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    const bool current = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillRect(option.rect, option.palette.color(QPalette::Base));
    if (current) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(option.palette.color(QPalette::Highlight));
        painter->drawRoundedRect(QRectF(option.rect).adjusted(3, 1, -3, -1), controlRadius - 1,
                                 controlRadius - 1);
    }
    const auto colour = option.palette.color(current ? QPalette::HighlightedText : QPalette::Text);
    if (isChosen(option, index)) {
        const QRect room(option.rect.left(), option.rect.top(), markRoom, option.rect.height());
        const auto placed = QStyle::visualRect(option.direction, option.rect, room);
        drawMark(*painter, QRectF(placed).center() + QPointF(1, 0), colour);
    }
    painter->setPen(colour);
    painter->setFont(option.font);
    painter->drawText(QStyle::visualRect(option.direction, option.rect,
                                         option.rect.adjusted(markRoom, 0, -trailingPadding, 0)),
                      static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignLeading)) |
                          Qt::AlignVCenter | Qt::TextSingleLine,
                      index.data().toString());
    painter->restore();
}

QSize PickerItems::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return {option.fontMetrics.horizontalAdvance(index.data().toString()) + extraWidth,
            std::max(itemHeight, option.fontMetrics.height() + 6)};
}

} // namespace orvantile
