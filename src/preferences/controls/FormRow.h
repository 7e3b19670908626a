#pragma once

#include <QHBoxLayout>
#include <QLabel>
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

private:
    QLabel label;
    QHBoxLayout content;
};

} // namespace orvantile
