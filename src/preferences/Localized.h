#pragma once

#include <QString>
#include <QStringList>

namespace orvantile {

/// A text of the preferences (UTF-8) in the user's language, if an installed translator knows it.
[[nodiscard]] QString localized(const char* text);
[[nodiscard]] QString localized(const QString& text);

/// The labels of every case of an enumeration, in the order in which pickers list them.
template <typename Option>
[[nodiscard]] QStringList localizedOptions() {
    QStringList labels;
    for (const auto& option : Option::allCases) {
        labels.append(localized(option.label()));
    }
    return labels;
}

} // namespace orvantile
