#include "preferences/controls/ValueSliderAccessible.h"

#include <cmath>
#include <memory>

namespace orvantile {
namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* slider = dynamic_cast<ValueSlider*>(object)) {
        return std::make_unique<ValueSliderAccessible>(*slider).release(); // the toolkit's from here on
    }
    return nullptr;
}

} // namespace

ValueSliderAccessible::ValueSliderAccessible(ValueSlider& slider_)
    : QAccessibleWidget(&slider_, QAccessible::Slider),
      slider(slider_) {}

void ValueSliderAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory(&makeInterface);
        return true;
    }();
    static_cast<void>(installed);
}

void* ValueSliderAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::ValueInterface) {
        return static_cast<QAccessibleValueInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

QString ValueSliderAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Value ? slider.accessibleValue : QAccessibleWidget::text(kind);
}

QVariant ValueSliderAccessible::currentValue() const {
    return slider.currentValue();
}

void ValueSliderAccessible::setCurrentValue(const QVariant& value) {
    bool isNumber = false;
    const double wanted = value.toDouble(&isNumber);
    if (isNumber && std::isfinite(wanted)) {
        slider.moveTo(wanted);
    }
}

QVariant ValueSliderAccessible::maximumValue() const {
    return slider.range().maximum;
}

QVariant ValueSliderAccessible::minimumValue() const {
    return slider.range().minimum;
}

QVariant ValueSliderAccessible::minimumStepSize() const {
    return slider.range().step;
}

} // namespace orvantile
