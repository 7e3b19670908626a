#include "preferences/controls/FormRow.h"

#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/Typography.h"

#include <QEvent>

namespace orvantile {
namespace {

constexpr int labelMargin = 6; // so that several lines keep away from the neighbours

} // namespace

FormRow::FormRow(const QString& text) : content(this) {
    setMargins();
    content.setSpacing(rowSpacing);
    label.setFont(bodyFont());
    label.setWordWrap(true);
    label.setContentsMargins(0, labelMargin, 0, labelMargin);
    label.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setMinimumHeight(rowHeight);
    label.hide();
    setText(text);
}

void FormRow::addControl(QWidget& control, int stretch) {
    content.addWidget(&control, stretch, stretch > 0 ? Qt::Alignment() : Qt::AlignVCenter);
    if (label.buddy() == nullptr && control.focusPolicy() != Qt::NoFocus) {
        label.setBuddy(&control); // so that assistive technology calls the control by the text
    }
    overhang = control.contentsMargins().right();
    setMargins();
    control.show();
}

void FormRow::setMargins() {
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    content.setContentsMargins(mirrored ? rowPadding - overhang : rowPadding, 0,
                               mirrored ? rowPadding : rowPadding - overhang, 0);
}

void FormRow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange) {
        setMargins();
    }
}

void FormRow::addLeading(QWidget& control) {
    content.insertWidget(0, &control, 0, Qt::AlignVCenter);
    control.show();
}

void FormRow::addSpacer() {
    overhang = 0;
    setMargins();
    content.addStretch(1);
}

void FormRow::setLabelWidth(int width) {
    label.setFixedWidth(width);
    content.setStretchFactor(&label, 0);
}

int FormRow::labelAdvance() const {
    return label.fontMetrics().horizontalAdvance(label.text()) + 2;
}

void FormRow::setText(const QString& text) {
    label.setText(text);
    if (!text.isEmpty() && content.indexOf(&label) < 0) {
        content.addWidget(&label, 1);
        label.show();
    }
}

} // namespace orvantile
