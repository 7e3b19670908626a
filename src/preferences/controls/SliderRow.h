#pragma once

#include "preferences/controls/DigitsLabel.h"
#include "preferences/controls/FormRow.h"
#include "preferences/controls/ValueSlider.h"

#include <QString>

namespace orvantile {

/// A text, a slider and its value in digits.
class SliderRow final : public FormRow {
public:
    using Format = QString (*)(double value);

    SliderRow(const QString& text, const ValueSlider::Range& range, Format format);

    /// Shows the value without reporting it.
    void reflect(double value);

    [[nodiscard]] QString digits() const { return number.text(); }

    ValueSlider slider;

private:
    Format format;
    DigitsLabel number;
};

} // namespace orvantile
