#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <optional>

namespace orvantile {

/// The sound that accompanies the HUD. The raw value is also the name of the sound to play.
class HUDSound {
public:
    enum Case { pop, tink, glass, ping, morse, purr };

    /// In declaration order, as pickers list them.
    static const std::array<HUDSound, 6> allCases;

    /// What an unreadable stored value counts as.
    static const HUDSound fallback;

    constexpr HUDSound(Case value_) : value(value_) {} // a case is a HUDSound

    /// Exact, case-sensitive.
    [[nodiscard]] static std::optional<HUDSound> fromRawValue(QStringView rawValue);

    [[nodiscard]] QString rawValue() const; ///< as persisted
    [[nodiscard]] QString label() const;    ///< as pickers show it

    [[nodiscard]] QString id() const { return rawValue(); }

    constexpr operator Case() const { return value; }

private:
    Case value;
};

} // namespace orvantile

template <>
struct std::hash<orvantile::HUDSound> {
    std::size_t operator()(const orvantile::HUDSound& option) const noexcept {
        return std::hash<int>()(option);
    }
};
