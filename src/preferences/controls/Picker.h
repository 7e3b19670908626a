#pragma once

#include "preferences/controls/KeyboardFocus.h"
#include "preferences/controls/PickerItems.h"

#include <QComboBox>

namespace orvantile {

/// A choice of one among several, shown as the chosen one until it is opened.
class Picker final : public KeyboardFocus<QComboBox> {
public:
    /// `name` is what assistive technology calls it.
    Picker(const QString& name, const QStringList& options);

    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    PickerItems items;
};

} // namespace orvantile
