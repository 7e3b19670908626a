#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <optional>

namespace orvantile {

/// The appearance of the desktop that the HUD is shown against. The HUD is drawn in the opposite tone.
class HUDAppearance {
public:
    enum Case { auto_, light, dark };

    /// In declaration order, as pickers list them.
    static const std::array<HUDAppearance, 3> allCases;

    /// What an unreadable stored value counts as.
    static const HUDAppearance fallback;

    constexpr HUDAppearance(Case value_) : value(value_) {} // a case is a HUDAppearance

    /// Exact, case-sensitive.
    [[nodiscard]] static std::optional<HUDAppearance> fromRawValue(QStringView rawValue);

    [[nodiscard]] QString rawValue() const; ///< as persisted
    [[nodiscard]] QString label() const;    ///< as pickers show it

    [[nodiscard]] QString id() const { return rawValue(); }

    constexpr operator Case() const { return value; }

    /// Whether the desktop is dark at this moment.
    [[nodiscard]] static bool systemIsDark();

    /// Whether the HUD is drawn dark-backed: `light` gives true, `dark` false, so that it stands out. For
    /// `auto_` `schemeIsDark` says what it is shown against.
    [[nodiscard]] bool darkMode(bool schemeIsDark) const;

private:
    Case value;
};

} // namespace orvantile

template <>
struct std::hash<orvantile::HUDAppearance> {
    std::size_t operator()(const orvantile::HUDAppearance& option) const noexcept {
        return std::hash<int>()(option);
    }
};
