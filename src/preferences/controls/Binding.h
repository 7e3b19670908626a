#pragma once

#include "preferences/controls/Picker.h"
#include "preferences/controls/SegmentedPicker.h"
#include "preferences/controls/SliderRow.h"
#include "preferences/controls/Switch.h"
#include "settings/Published.h"

#include <QSignalBlocker>
#include <algorithm>

namespace orvantile {

// Each `bind` makes a control write its setting the moment the user moves it and follow the setting whoever
// changes it. The control must not outlive the setting; destroying the subscription ends the second half.

[[nodiscard]] inline Subscription bind(Switch& control, Published<bool>& setting) {
    QObject::connect(&control, &QAbstractButton::toggled, &control, [&setting](bool on) { setting = on; });
    return setting.subscribe([&control](bool on) { control.reflect(on); });
}

[[nodiscard]] inline Subscription bind(SliderRow& control, Published<double>& setting) {
    control.slider.onMove = [&setting](double value) { setting = value; };
    return setting.subscribe([&control](double value) { control.reflect(value); });
}

template <typename Option>
[[nodiscard]] int indexOf(const Option& option) {
    const auto found = std::ranges::find(Option::allCases, option);
    return static_cast<int>(std::distance(Option::allCases.begin(), found));
}

template <typename Option>
[[nodiscard]] Subscription bind(Picker& control, Published<Option>& setting) {
    QObject::connect(&control, &QComboBox::currentIndexChanged, &control, [&setting](int index) {
        setting = Option::allCases.at(static_cast<std::size_t>(index));
    });
    return setting.subscribe([&control](const Option& option) {
        const QSignalBlocker quiet(&control);
        control.setCurrentIndex(indexOf(option));
    });
}

template <typename Option>
[[nodiscard]] Subscription bind(SegmentedPicker& control, Published<Option>& setting) {
    control.onChoice = [&setting](int index) {
        setting = Option::allCases.at(static_cast<std::size_t>(index));
    };
    return setting.subscribe([&control](const Option& option) { control.reflect(indexOf(option)); });
}

} // namespace orvantile
