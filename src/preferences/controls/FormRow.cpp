#include "preferences/controls/FormRow.h"

#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/Typography.h"

namespace orvantile {

FormRow::FormRow(const QString& text) : content(this) {
    content.setContentsMargins(rowPadding, 0, rowPadding, 0);
    content.setSpacing(rowSpacing);
    label.setFont(bodyFont());
    label.setWordWrap(true);
    label.setTextFormat(Qt::PlainText);
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
    control.show();
}

void FormRow::addLeading(QWidget& control) {
    content.insertWidget(0, &control, 0, Qt::AlignVCenter);
    control.show();
}

void FormRow::addSpacer() {
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
