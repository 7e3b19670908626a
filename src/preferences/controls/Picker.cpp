#include "preferences/controls/Picker.h"

#include "preferences/controls/ControlFace.h"
#include "preferences/controls/Drawing.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/Typography.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>

namespace orvantile {
namespace {

constexpr int leadingPadding = 10;
constexpr int chevronRoom = 26;

void drawChevrons(QPainter& painter, const QPointF& centre, const QColor& colour) {
    constexpr double half = 3.2;
    constexpr double gap = 2.2;
    QPainterPath path;
    path.moveTo(centre.x() - half, centre.y() - gap);
    path.lineTo(centre.x(), centre.y() - gap - half);
    path.lineTo(centre.x() + half, centre.y() - gap);
    path.moveTo(centre.x() - half, centre.y() + gap);
    path.lineTo(centre.x(), centre.y() + gap + half);
    path.lineTo(centre.x() + half, centre.y() + gap);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
}

} // namespace

Picker::Picker(const QString& name, const QStringList& options) {
    setAccessibleName(name);
    setFont(bodyFont());
    setContentsMargins(focusMargin, focusMargin, focusMargin, focusMargin);
    addItems(options);
    setItemDelegate(&items);
    view()->setFont(font());
    int widest = 0;
    for (const auto& option : options) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(option));
    }
    view()->setMinimumWidth(widest + PickerItems::extraWidth);
    setMaxVisibleItems(std::max(1, count()));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
}

QSize Picker::sizeHint() const {
    int widest = 0;
    for (int i = 0; i < count(); ++i) {
        widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(i)));
    }
    return {widest + leadingPadding + chevronRoom + 2 * focusMargin,
            std::max(controlHeight, fontMetrics().height() + 6) + 2 * focusMargin};
}

void Picker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto face = controlFace(rect());
    drawControlFace(painter, *this, face, false, underMouse());
    const auto words = face.toRect().adjusted(leadingPadding, 0, -chevronRoom, 0);
    const QRect arrows(face.toRect().right() - chevronRoom + 4, face.toRect().top(), chevronRoom - 4,
                       face.toRect().height());
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), words),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeading)) |
                         Qt::AlignVCenter | Qt::TextSingleLine,
                     currentText());
    drawChevrons(painter, QRectF(QStyle::visualRect(layoutDirection(), rect(), arrows)).center(),
                 palette().color(isEnabled() ? QPalette::PlaceholderText : QPalette::ButtonText));
    if (isFocusVisible()) {
        drawFocusRing(painter, face, controlRadius, palette().color(QPalette::Highlight));
    }
}

void Picker::changeEvent(QEvent* event) {
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        view()->window()->setPalette(palette()); // a window of its own, which inherits nothing
        view()->setPalette(palette());
    }
}

void Picker::wheelEvent(QWheelEvent* event) {
    event->ignore(); // scrolling past it must not choose
}

void Picker::enterEvent(QEnterEvent* event) {
    QComboBox::enterEvent(event);
    update();
}

void Picker::leaveEvent(QEvent* event) {
    QComboBox::leaveEvent(event);
    update();
}

} // namespace orvantile
