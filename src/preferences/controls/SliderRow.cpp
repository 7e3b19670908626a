#include "preferences/controls/SliderRow.h"

#include "preferences/controls/FormMetrics.h"

#include <algorithm>

namespace orvantile {
namespace {

// Sliders below each other start at the same place unless a text needs more room.
constexpr int narrowestLabel = 132;
constexpr int widestLabel = 190;

} // namespace

SliderRow::SliderRow(const QString& text, const ValueSlider::Range& range, Format format_)
    : FormRow(text),
      slider(text, range),
      format(format_),
      number(numberWidth, format(range.maximum)) {
    setLabelWidth(std::clamp(labelAdvance(), narrowestLabel, widestLabel));
    addControl(slider, 1);
    addControl(number);
}

void SliderRow::reflect(double value) {
    const auto words = format(value);
    slider.accessibleValue = words;
    slider.reflect(value);
    number.setNumber(words);
}

} // namespace orvantile
