#pragma once

#include "preferences/controls/LeadingLabel.h"

#include <QHBoxLayout>
#include <QWidget>

namespace orvantile {

/// A row of a card: a text at the leading edge and controls after it.
class FormRow : public QWidget {
public:
    /// With no text when `text` is empty.
    explicit FormRow(const QString& text = {});

    /// Adds a control at its own size, or one that takes the free room when `stretch` is above 0.
    void addControl(QWidget& control, int stretch = 0);

    /// Adds a control before the text.
    void addLeading(QWidget& control);

    /// Leaves free room between what was added before and what comes after.
    void addSpacer();

    /// Gives the text exactly `width` points, in as many lines as it takes.
    void setLabelWidth(int width);

    /// What the text needs on one line.
    [[nodiscard]] int labelAdvance() const;

    void setText(const QString& text);

    [[nodiscard]] QString text() const { return label.text(); }

protected:
    void changeEvent(QEvent* event) override;

private:
    void setMargins();

    LeadingLabel label;
    QHBoxLayout content;
    int overhang = 0; ///< what the last control keeps free at its edge for its focus ring
};

} // namespace orvantile
