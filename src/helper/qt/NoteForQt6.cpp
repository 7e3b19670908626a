// Qt 6 complains on standard error about each plugin of Qt 5 that it comes across. This note, which Qt 5 does
// not know, tells it instead that this is a plugin for something it does not look for.
#include <array>
#include <cstdint>

namespace orvantile::helper {
namespace {

/// An ELF note as Qt 6 describes plugins: owner, kind, and the description.
struct Note {
    std::uint32_t ownerSize = 12;
    std::uint32_t descriptionSize = 16;
    std::uint32_t kind = 0x74510001;
    std::array<char, 12> owner{"qt-project!"};
    std::array<std::uint8_t, 16> description{
        1,    6,    0,   1,             // form, version 6.0, a release for the usual processors
        0xBF,                           // a map:
        2,    0x64, 'n', 'o', 'n', 'e', // interface: "none"
        3,    0x62, 'n', 'o',           // class: "no"
        0xFF};                          // its end
};

[[gnu::section(".note.qt.metadata"), gnu::used]] alignas(void*) constexpr Note note;

} // namespace
} // namespace orvantile::helper
