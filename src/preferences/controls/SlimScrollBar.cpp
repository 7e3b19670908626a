#include "preferences/controls/SlimScrollBar.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr int thickness = 10;
constexpr double inset = 2;
constexpr double shortestThumb = 28;

} // namespace

SlimScrollBar::SlimScrollBar() : QScrollBar(Qt::Vertical) {
    setFixedWidth(thickness);
}

QSize SlimScrollBar::sizeHint() const {
    return {thickness, thickness};
}

QRectF SlimScrollBar::thumb() const {
    const double room = height() - 2 * inset;
    const double whole = maximum() - minimum() + pageStep();
    const double length =
        std::clamp(room * pageStep() / std::max(whole, 1.0), std::min(shortestThumb, room), room);
    const double part = double{1} * (value() - minimum()) / std::max(1, maximum() - minimum());
    return {inset, inset + part * (room - length), thickness - 2 * inset, length};
}

void SlimScrollBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    auto colour = palette().color(QPalette::WindowText);
    colour.setAlphaF(isSliderDown() ? 0.55F : underMouse() ? 0.45F : 0.3F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    const auto area = thumb();
    painter.drawRoundedRect(area, area.width() / 2, area.width() / 2);
}

void SlimScrollBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const auto area = thumb();
    const double y = event->position().y();
    if (y < area.top() || y > area.bottom()) {
        triggerAction(y < area.top() ? SliderPageStepSub : SliderPageStepAdd);
        return;
    }
    grip = y - area.top();
    setSliderDown(true);
    update();
}

void SlimScrollBar::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown()) {
        const double travel = height() - 2 * inset - thumb().height();
        const double part = (event->position().y() - grip - inset) / std::max(1.0, travel);
        setValue(minimum() +
                 static_cast<int>(std::lround(std::clamp(part, 0.0, 1.0) * (maximum() - minimum()))));
    }
}

void SlimScrollBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        setSliderDown(false);
        update();
    }
}

void SlimScrollBar::enterEvent(QEnterEvent* event) {
    QScrollBar::enterEvent(event);
    update();
}

void SlimScrollBar::leaveEvent(QEvent* event) {
    QScrollBar::leaveEvent(event);
    update();
}

} // namespace orvantile
