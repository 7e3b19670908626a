#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>

namespace orvantile {

/// A tab of the preferences window.
class PreferencesTab {
public:
    enum Case { general, hud, sound };

    /// In declaration order, as the selector lists them.
    static const std::array<PreferencesTab, 3> allCases;

    constexpr PreferencesTab(Case value_) : value(value_) {} // a case is a PreferencesTab

    /// Exact, case-sensitive.
    [[nodiscard]] static std::optional<PreferencesTab> fromRawValue(QStringView rawValue);

    [[nodiscard]] QString rawValue() const;
    [[nodiscard]] QString label() const; ///< on its segment

    [[nodiscard]] QString id() const { return rawValue(); }

    constexpr operator Case() const { return value; }

private:
    Case value;
};

} // namespace orvantile

template <>
struct std::hash<orvantile::PreferencesTab> {
    std::size_t operator()(const orvantile::PreferencesTab& tab) const noexcept {
        return std::hash<int>()(tab);
    }
};
