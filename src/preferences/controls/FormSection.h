#pragma once

#include "preferences/controls/LeadingLabel.h"

#include <QVBoxLayout>
#include <QWidget>

namespace orvantile {

/// A card of rows with hairlines between them, under a header if it has one.
class FormSection final : public QWidget {
public:
    explicit FormSection(const QString& header = {});

    /// Adds `row` at the end, or at `index` among the rows. The row stays the caller's and leaves when
    /// destroyed.
    void addRow(QWidget& row, int index = -1);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRectF card() const;

    LeadingLabel header;
    QVBoxLayout rows;
};

} // namespace orvantile
