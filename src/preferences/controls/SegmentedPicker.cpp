#include "preferences/controls/SegmentedPicker.h"

#include "preferences/controls/AccessibleRole.h"
#include "preferences/controls/Drawing.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/FormPalette.h"

#include <QPainter>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

namespace orvantile {
namespace {

constexpr int inset = 2; // of the pill inside its trough

} // namespace

SegmentedPicker::SegmentedPicker(const QString& name, const QStringList& options) : layout(this) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    layout.setContentsMargins(inset, inset, inset, inset);
    layout.setSpacing(0);
    for (const auto& option : options) {
        auto& segment = *segments.emplace_back(std::make_unique<Segment>(option));
        group.addButton(&segment, static_cast<int>(segments.size()) - 1);
        layout.addWidget(&segment, 1);
    }
    QObject::connect(&group, &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
        if (chosen) {
            showChosen(index);
            if (onChoice) {
                onChoice(index);
            }
        }
    });
}

void SegmentedPicker::reflect(int index) {
    if (auto* button = group.button(index); button != nullptr && !button->isChecked()) {
        const QSignalBlocker quiet(&group);
        button->setChecked(true);
        showChosen(index);
    }
}

void SegmentedPicker::showChosen(int index) {
    selection.moveTo(index);
    for (std::size_t i = 0; i < segments.size(); ++i) {
        segments[i]->setFocusPolicy(static_cast<int>(i) == index ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

void SegmentedPicker::setHelp(const QString& help) {
    setToolTip(help);
    for (const auto& segment : segments) {
        segment->setToolTip(help);
    }
}

QRectF SegmentedPicker::pill(double position) const {
    const auto last = static_cast<double>(segments.size()) - 1;
    const double at = std::clamp(position, 0.0, last);
    const QRectF from = segments.at(static_cast<std::size_t>(std::floor(at)))->geometry();
    const QRectF to = segments.at(static_cast<std::size_t>(std::ceil(at)))->geometry();
    const double part = at - std::floor(at);
    return {from.x() + (to.x() - from.x()) * part, from.y(),
            from.width() + (to.width() - from.width()) * part, from.height()};
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const bool dark = isDark(palette());
    drawEdged(painter, rect(), controlRadius + inset, dark ? QColor(255, 255, 255, 18) : QColor(0, 0, 0, 16),
              dark ? QColor(255, 255, 255, 10) : QColor(0, 0, 0, 10));
    if (group.checkedId() < 0) {
        return;
    }
    const auto chosen = pill(selection.position());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, dark ? 70 : 26));
    painter.drawRoundedRect(chosen.translated(0, 1), controlRadius, controlRadius);
    drawEdged(painter, chosen, controlRadius, dark ? QColor(0x5c, 0x5c, 0x64) : QColor(Qt::white),
              dark ? QColor(255, 255, 255, 24) : QColor(0, 0, 0, 20));
}

void SegmentedPicker::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    update();
}

} // namespace orvantile
