#pragma once

#include <QString>
#include <array>
#include <cstddef>
#include <optional>

namespace orvantile {

/// Where on the screen the HUD is shown.
class HUDPosition {
public:
    enum Case { center, topCenter, bottomCenter, topLeft, topRight, bottomLeft, bottomRight };

    /// In declaration order, as pickers list them.
    static const std::array<HUDPosition, 7> allCases;

    /// What an unreadable stored value counts as.
    static const HUDPosition fallback;

    constexpr HUDPosition(Case value_) : value(value_) {} // a case is a HUDPosition

    /// Exact, case-sensitive.
    [[nodiscard]] static std::optional<HUDPosition> fromRawValue(QStringView rawValue);

    [[nodiscard]] QString rawValue() const; ///< as persisted
    [[nodiscard]] QString label() const;    ///< as pickers show it

    [[nodiscard]] QString id() const { return rawValue(); }

    constexpr operator Case() const { return value; }

private:
    Case value;
};

} // namespace orvantile

template <>
struct std::hash<orvantile::HUDPosition> {
    std::size_t operator()(const orvantile::HUDPosition& option) const noexcept {
        return std::hash<int>()(option);
    }
};
