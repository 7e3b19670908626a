#include "preferences/controls/ValueSlider.h"

#include "preferences/controls/Drawing.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/ValueSliderAccessible.h"

#include <QMouseEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr double knobDiameter = 16;
constexpr double trackHeight = 4;
constexpr double margin = knobDiameter / 2 + 3; // room for the focus ring
constexpr int positions = 10000;                // of the toolkit's own slider underneath

} // namespace

ValueSlider::ValueSlider(const QString& name, const Range& range_)
    : KeyboardFocus<QSlider>(Qt::Horizontal),
      limits(range_),
      value(range_.minimum) {
    ValueSliderAccessible::install();
    setAccessibleName(name);
    setRange(0, positions);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ValueSlider::store(double newValue) {
    value = newValue;
    const QSignalBlocker quiet(this);
    setValue(static_cast<int>(std::lround(fraction() * positions)));
    update();
}

void ValueSlider::reflect(double newValue) {
    store(newValue);
}

void ValueSlider::moveTo(double newValue) {
    if (std::isnan(newValue)) {
        return;
    }
    store(std::clamp(newValue, limits.minimum, limits.maximum));
    if (onMove) {
        onMove(value);
    }
}

void ValueSlider::stepBy(double amount) {
    const double from =
        std::isnan(value) ? limits.minimum : std::clamp(value, limits.minimum, limits.maximum);
    moveTo(from + amount);
}

QSize ValueSlider::sizeHint() const {
    return {200, controlHeight};
}

QSize ValueSlider::minimumSizeHint() const {
    return {80, controlHeight};
}

double ValueSlider::fraction() const {
    const double part = (value - limits.minimum) / (limits.maximum - limits.minimum);
    return std::isnan(part) ? 0 : std::clamp(part, 0.0, 1.0);
}

double ValueSlider::knobX() const {
    const double part = layoutDirection() == Qt::RightToLeft ? 1 - fraction() : fraction();
    return margin + part * (width() - 2 * margin);
}

double ValueSlider::valueAt(double x) const {
    const double part = std::clamp((x - margin) / std::max(1.0, width() - 2 * margin), 0.0, 1.0);
    const double along = layoutDirection() == Qt::RightToLeft ? 1 - part : part;
    return limits.minimum + along * (limits.maximum - limits.minimum);
}

void ValueSlider::keyPressEvent(QKeyEvent* event) {
    const double forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
    case Qt::Key_Right:
        stepBy(forward * limits.step);
        break;
    case Qt::Key_Left:
        stepBy(-forward * limits.step);
        break;
    case Qt::Key_Up:
        stepBy(limits.step);
        break;
    case Qt::Key_Down:
        stepBy(-limits.step);
        break;
    case Qt::Key_PageUp:
        stepBy(limits.bigStep);
        break;
    case Qt::Key_PageDown:
        stepBy(-limits.bigStep);
        break;
    case Qt::Key_Home:
        moveTo(limits.minimum);
        break;
    case Qt::Key_End:
        moveTo(limits.maximum);
        break;
    default:
        KeyboardFocus<QSlider>::keyPressEvent(event);
        return;
    }
    event->accept();
}

void ValueSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const double offset = event->position().x() - knobX();
    const bool onKnob = std::abs(offset) <= knobDiameter / 2;
    grip = onKnob ? offset : 0;
    setSliderDown(true);
    if (!onKnob) {
        moveTo(valueAt(event->position().x()));
    }
    update();
}

void ValueSlider::mouseMoveEvent(QMouseEvent* event) {
    if (isSliderDown()) {
        moveTo(valueAt(event->position().x() - grip));
    }
}

void ValueSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        setSliderDown(false);
        update();
    }
}

void ValueSlider::wheelEvent(QWheelEvent* event) {
    event->ignore(); // scrolling past it must not move it
}

void ValueSlider::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double y = height() / 2.0;
    const double x = knobX();
    const QRectF track(margin - knobDiameter / 2, y - trackHeight / 2, width() - 2 * margin + knobDiameter,
                       trackHeight);
    drawEdged(painter, track, trackHeight / 2, palette().color(QPalette::Midlight), QColor(0, 0, 0, 14));
    auto filled = track;
    if (layoutDirection() == Qt::RightToLeft) {
        filled.setLeft(x);
    } else {
        filled.setRight(x);
    }
    drawEdged(painter, filled, trackHeight / 2, palette().color(QPalette::Highlight), Qt::transparent);
    const QRectF knob(x - knobDiameter / 2, y - knobDiameter / 2, knobDiameter, knobDiameter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 26));
    painter.drawEllipse(knob.translated(0, 1));
    const auto face = palette().color(QPalette::Light);
    drawEdged(painter, knob, knobDiameter / 2, isSliderDown() ? mixed(face, Qt::black, 0.06) : face,
              QColor(0, 0, 0, 46));
    if (isFocusVisible()) {
        drawFocusRing(painter, knob, knobDiameter / 2, palette().color(QPalette::Highlight));
    }
}

} // namespace orvantile
