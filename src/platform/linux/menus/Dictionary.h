#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <systemd/sd-bus.h>

// Reading of containers from programs that nobody vouches for. Each function reads on from where the message
// stands and is false when that is not what it expects; then the message is of no further use.
namespace orvantile::platform::menus {

/// More entries than any of these lists has.
inline constexpr std::size_t mostElements = 4'000;
inline constexpr std::size_t mostProperties = 64;

/// Reads a dictionary of names and variants: calls `read` with the message before each variant. What `read`
/// leaves untouched is skipped; false from it ends the reading.
[[nodiscard]] bool readDictionary(sd_bus_message& message,
                                  const std::function<bool(std::string_view name, sd_bus_message&)>& read);

/// Reads an array of at most `most` elements of the type `contents`: calls `read` before each.
[[nodiscard]] bool readArray(sd_bus_message& message, const char* contents,
                             const std::function<bool(sd_bus_message&)>& read,
                             std::size_t most = mostElements);

/// Whether the message stands before a variant that holds a value of the type `contents`.
[[nodiscard]] bool holdsVariant(sd_bus_message& message, std::string_view contents);

} // namespace orvantile::platform::menus
