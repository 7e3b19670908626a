#pragma once

#include "platform/linux/a11y/AccessibleRole.h"
#include "platform/linux/a11y/BusHandles.h"
#include "platform/linux/a11y/ObjectReference.h"

#include <QString>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// Reading of answers and signals from programs that nobody vouches for. What is not exactly of the expected
// type, not UTF-8, or larger than anything sensible is absent. Each function reads on from where the message
// stands.
namespace orvantile::platform::a11y {

/// Texts and object paths longer than these (bytes) are taken for garbage.
inline constexpr std::size_t longestText = 4096;
inline constexpr std::size_t longestPath = 255;

/// The states of an accessible, by number.
class StateSet {
public:
    explicit StateSet(std::uint64_t bits_ = 0) : bits(bits_) {}

    [[nodiscard]] bool has(AccessibleState state) const {
        return (bits >> static_cast<unsigned>(state) & 1U) != 0;
    }

private:
    std::uint64_t bits;
};

/// Whether this is an answer at all and not an error.
[[nodiscard]] bool isAnswer(sd_bus_message& message);

/// Whether the error says that nobody answered in time.
[[nodiscard]] bool isSilence(sd_bus_message& message);

[[nodiscard]] std::optional<std::string> readBytes(sd_bus_message& message,
                                                   std::size_t longest = longestText);
/// An object path.
[[nodiscard]] std::optional<std::string> readPath(sd_bus_message& message);
[[nodiscard]] std::optional<QString> readText(sd_bus_message& message);
[[nodiscard]] std::optional<std::int32_t> readInteger(sd_bus_message& message);
[[nodiscard]] std::optional<std::uint32_t> readNumber(sd_bus_message& message);

/// The values inside a variant.
[[nodiscard]] std::optional<QString> readVariantText(sd_bus_message& message);
[[nodiscard]] std::optional<bool> readVariantBoolean(sd_bus_message& message);
[[nodiscard]] std::optional<ObjectReference> readVariantReference(sd_bus_message& message);

[[nodiscard]] std::optional<ObjectReference> readReference(sd_bus_message& message);
[[nodiscard]] std::optional<StateSet> readStates(sd_bus_message& message);

/// An array of object references, read piece by piece because it may be endless.
class ReferenceList {
public:
    /// Takes the answer over. An empty list when it is of another type.
    explicit ReferenceList(sd_bus_message& message);

    /// Up to `count` further references; fewer only at the end.
    [[nodiscard]] std::vector<ObjectReference> next(std::size_t count);

    [[nodiscard]] bool atEnd() const { return message == nullptr; }

private:
    MessageHandle message;
};

} // namespace orvantile::platform::a11y
