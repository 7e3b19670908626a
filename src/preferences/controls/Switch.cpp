#include "preferences/controls/Switch.h"

#include "preferences/controls/Drawing.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/SwitchAccessible.h"
#include "preferences/controls/Typography.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>

namespace orvantile {
namespace {

constexpr QSize trackSize(34, 20);
constexpr double knobInset = 2;
constexpr double pressedStretch = 3;

} // namespace

Switch::Switch(const QString& text) {
    SwitchAccessible::install();
    setText(text);
    setFont(bodyFont());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setCursor(Qt::ArrowCursor);
}

void Switch::reflect(bool on) {
    const QSignalBlocker quiet(this);
    setChecked(on);
}

QSize Switch::sizeHint() const {
    const int width =
        fontMetrics().horizontalAdvance(text()) + 2 * rowPadding + rowSpacing + trackSize.width();
    return {width, heightForWidth(width)};
}

QSize Switch::minimumSizeHint() const {
    return {2 * rowPadding + rowSpacing + trackSize.width(), rowHeight};
}

int Switch::heightForWidth(int width) const {
    const int available = std::max(1, width - 2 * rowPadding - rowSpacing - trackSize.width());
    const auto needed = fontMetrics().boundingRect(0, 0, available, 10000, Qt::TextWordWrap, text());
    return std::max(rowHeight, needed.height() + 2 * rowTextMargin);
}

bool Switch::hitButton(const QPoint& position) const {
    return rect().contains(position);
}

void Switch::checkStateSet() {
    QCheckBox::checkStateSet();
    slide();
}

void Switch::nextCheckState() {
    QCheckBox::nextCheckState();
    slide();
}

void Switch::slide() {
    knob.moveTo(isChecked() ? 1 : 0);
}

void Switch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto content = rect().adjusted(rowPadding, 0, -rowPadding, 0);
    const QRect track(content.right() + 1 - trackSize.width(), (height() - trackSize.height()) / 2,
                      trackSize.width(), trackSize.height());
    const auto words = content.adjusted(0, 0, -trackSize.width() - rowSpacing, 0);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), words),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeading)) |
                         Qt::AlignVCenter | Qt::TextWordWrap,
                     text());
    paintTrack(painter, QStyle::visualRect(layoutDirection(), rect(), track));
}

void Switch::paintTrack(QPainter& painter, const QRectF& track) const {
    const double radius = track.height() / 2;
    const auto off = palette().color(QPalette::Midlight);
    if (!isEnabled()) {
        painter.setOpacity(0.45);
    }
    drawEdged(painter, track, radius, mixed(off, palette().color(QPalette::Highlight), knob.position()),
              QColor(0, 0, 0, 22));
    const double diameter = track.height() - 2 * knobInset;
    const double travel = track.width() - track.height();
    const double along = layoutDirection() == Qt::RightToLeft ? 1 - knob.position() : knob.position();
    const double stretch = isDown() ? pressedStretch : 0; // towards where it will go
    const QRectF face(track.left() + knobInset + travel * along - stretch * along, track.top() + knobInset,
                      diameter + stretch, diameter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 40));
    painter.drawRoundedRect(face.translated(0, 0.75), diameter / 2, diameter / 2);
    painter.setBrush(palette().color(QPalette::Light));
    painter.drawRoundedRect(face, diameter / 2, diameter / 2);
    if (isFocusVisible()) {
        drawFocusRing(painter, track, radius, palette().color(QPalette::Highlight));
    }
}

} // namespace orvantile
