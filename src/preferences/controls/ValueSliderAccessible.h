#pragma once

#include "preferences/controls/ValueSlider.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace orvantile {

/// A value slider as assistive technology sees it: its real value and limits, not the toolkit's positions.
class ValueSliderAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit ValueSliderAccessible(ValueSlider& slider);

    /// Makes the toolkit use this for value sliders; harmless when done already.
    static void install();

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;

    [[nodiscard]] QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    [[nodiscard]] QVariant maximumValue() const override;
    [[nodiscard]] QVariant minimumValue() const override;
    [[nodiscard]] QVariant minimumStepSize() const override;

private:
    ValueSlider& slider;
};

} // namespace orvantile
