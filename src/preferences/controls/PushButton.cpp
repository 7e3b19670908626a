#include "preferences/controls/PushButton.h"

#include "preferences/controls/ControlFace.h"
#include "preferences/controls/Drawing.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/Typography.h"

#include <QPainter>
#include <algorithm>

namespace orvantile {
namespace {

constexpr int sidePadding = 14;

} // namespace

PushButton::PushButton(const QString& text, Role role_) : role(role_) {
    setText(text);
    setFont(bodyFont());
    setContentsMargins(focusMargin, focusMargin, focusMargin, focusMargin);
    setAutoDefault(false);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PushButton::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 2 * (sidePadding + focusMargin),
            std::max(controlHeight, fontMetrics().height() + 6) + 2 * focusMargin};
}

void PushButton::keyPressEvent(QKeyEvent* event) {
    const bool presses = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    KeyboardFocus<QPushButton>::keyPressEvent(event);
    if (presses && !event->isAutoRepeat()) {
        event->accept();
        click();
    }
}

void PushButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto face = controlFace(rect());
    drawControlFace(painter, *this, face, isDown(), underMouse());
    painter.setPen(palette().color(role == Role::destructive ? QPalette::BrightText : QPalette::ButtonText));
    painter.drawText(face, Qt::AlignCenter, text());
    if (isFocusVisible()) {
        drawFocusRing(painter, face, controlRadius, palette().color(QPalette::Highlight));
    }
}

void PushButton::enterEvent(QEnterEvent* event) {
    QPushButton::enterEvent(event);
    update();
}

void PushButton::leaveEvent(QEvent* event) {
    QPushButton::leaveEvent(event);
    update();
}

} // namespace orvantile
