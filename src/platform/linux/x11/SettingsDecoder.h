#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace orvantile::platform::x11 {

/// The settings that a desktop shares with its programs, by name (such as `Net/ThemeName`). Colours are left
/// out.
using SharedSettings = std::map<std::string, std::variant<std::int32_t, std::string>>;

/// Reads the value of the property `_XSETTINGS_SETTINGS`, laid out as in the XSETTINGS protocol 0.5. Absent
/// when it is cut off or not such a value.
[[nodiscard]] std::optional<SharedSettings> decodeSharedSettings(std::span<const std::uint8_t> bytes);

} // namespace orvantile::platform::x11
