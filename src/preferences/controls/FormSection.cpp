#include "preferences/controls/FormSection.h"

#include "preferences/controls/AccessibleRole.h"
#include "preferences/controls/Drawing.h"
#include "preferences/controls/Footnote.h"
#include "preferences/controls/FormMetrics.h"
#include "preferences/controls/Typography.h"

#include <QPainter>

namespace orvantile {
namespace {

constexpr int headerGap = 7;

} // namespace

FormSection::FormSection(const QString& title) : rows(this) {
    rows.setContentsMargins(0, 0, 0, 0);
    rows.setSpacing(0);
    header.setVisible(false);
    if (!title.isEmpty()) {
        header.setText(title);
        header.setFont(headerFont());
        header.setContentsMargins(rowPadding, 0, rowPadding, headerGap);
        rows.addWidget(&header);
        header.show();
        setAccessibleRole(*this, QAccessible::Grouping);
        setAccessibleName(title);
    }
}

void FormSection::addRow(QWidget& row, int index) {
    const int offset = header.text().isEmpty() ? 0 : 1;
    rows.insertWidget(index < 0 ? -1 : index + offset, &row);
    row.show();
}

QRectF FormSection::card() const {
    return QRectF(rect()).adjusted(0, header.isVisibleTo(this) ? header.geometry().bottom() + 1 : 0, 0, 0);
}

void FormSection::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const auto area = card();
    const auto edge = palette().color(QPalette::Mid);
    drawEdgedCard(painter, area, cardRadius, palette().color(QPalette::Base), edge);
    painter.setRenderHint(QPainter::Antialiasing, false);
    const double line = hairline(painter);
    bool first = true;
    for (int i = 0; i < rows.count(); ++i) {
        const auto* row = rows.itemAt(i)->widget();
        if (row == nullptr || row == &header || row->isHidden()) {
            continue;
        }
        if (!first && dynamic_cast<const Footnote*>(row) == nullptr) {
            painter.fillRect(QRectF(area.left() + rowPadding, row->y(), area.width() - 2 * rowPadding, line),
                             edge);
        }
        first = false;
    }
}

} // namespace orvantile
