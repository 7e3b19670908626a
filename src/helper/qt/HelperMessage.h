#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace orvantile::helper {

/// What a program with the helper sends, one datagram a message: this header and then, for a fired action,
/// the text of the action in UTF-8 as the program has it, mnemonic marks included, possibly cut. Both ends
/// are on one machine, so numbers are in its byte order.
struct MessageHeader {
    static constexpr std::array<char, 4> expectedMark{'O', 'r', 'v', '1'};

    static constexpr std::uint8_t menusChanged = 1;
    static constexpr std::uint8_t actionFired = 2;

    std::array<char, 4> mark = expectedMark;
    std::uint8_t kind = 0;
    std::uint8_t enabled = 0;            ///< of the action: 0 or 1
    std::uint8_t openMenus = 0;          ///< how many menus of the program are open now
    std::uint8_t keyCount = 0;           ///< how many of `keys` are used
    std::array<std::uint32_t, 4> keys{}; ///< the toolkit's key codes with its modifier bits
};

static_assert(std::is_trivially_copyable_v<MessageHeader> && sizeof(MessageHeader) == 24);

/// Longer texts are cut.
inline constexpr std::size_t longestText = 768;

/// The socket that receives the messages, in the user's runtime directory.
inline constexpr auto socketFolder = "org.orvantile.Orvantile";
inline constexpr auto socketName = "helper";

} // namespace orvantile::helper
