#pragma once

#include <QString>
#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace orvantile {

/// A case of an enumeration that is persisted as a string and listed in pickers.
template <typename Case>
struct StringCase {
    Case value;
    QStringView rawValue;
    QStringView label; ///< in pickers
};

/// The case whose raw value is exactly `rawValue`, or absent.
template <typename Case, std::size_t count>
[[nodiscard]] constexpr std::optional<Case> caseFromRawValue(const std::array<StringCase<Case>, count>& cases,
                                                             QStringView rawValue) {
    const auto found = std::ranges::find(cases, rawValue, &StringCase<Case>::rawValue);
    return found == cases.end() ? std::nullopt : std::optional(found->value);
}

} // namespace orvantile
