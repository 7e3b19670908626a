#pragma once

#include "preferences/controls/KeyboardFocus.h"

#include <QSlider>
#include <functional>

namespace orvantile {

/// A horizontal slider over a continuous range: no steps for the mouse, handy ones for keys and assistive
/// technology. A value outside the range is kept and shown at the nearer end until the user moves the slider.
class ValueSlider final : public KeyboardFocus<QSlider> {
public:
    struct Range {
        double minimum = 0;
        double maximum = 1;
        double step = 0.1;    ///< of an arrow key
        double bigStep = 0.5; ///< of a page key
    };

    /// `name` is what assistive technology calls it.
    ValueSlider(const QString& name, const Range& range);

    /// Called with the new value when the user has moved the slider.
    std::function<void(double)> onMove;

    /// The value in words, for assistive technology.
    QString accessibleValue;

    /// Shows the value without reporting it.
    void reflect(double value);

    [[nodiscard]] double currentValue() const { return value; }

    [[nodiscard]] const Range& range() const { return limits; }

    /// Moves the slider as the user would; the value is kept inside the range.
    void moveTo(double value);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double fraction() const;
    [[nodiscard]] double knobX() const;
    [[nodiscard]] double valueAt(double x) const;
    void store(double value);
    void stepBy(double amount);

    Range limits;
    double value;
    double grip = 0; ///< from the knob's centre to where it was taken
};

} // namespace orvantile
