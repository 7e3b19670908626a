#include "platform/linux/menus/ResourceBundle.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace orvantile::platform::menus {
namespace {

// The layout of the table, in words of 32 bits, little endian.
constexpr std::string_view signature = "GVariant";
constexpr std::size_t headerSize = 24;
constexpr std::size_t rootPointer = 16;
constexpr std::size_t itemSize = 24;
constexpr std::uint32_t bloomMask = (1U << 27U) - 1;
constexpr std::uint32_t noParent = 0xffffffffU;

constexpr std::uint32_t compressedFlag = 1;
constexpr std::string_view contentsType{"\0(uuay)", 7};

constexpr std::size_t mostItems = 20'000;
constexpr std::size_t longestPath = 1024;
constexpr std::uint32_t largestFile = 4U << 20U;
constexpr int deepestPath = 32;

} // namespace

ResourceBundle::ResourceBundle(QByteArray bytes_) : bytes(std::move(bytes_)) {}

std::optional<std::uint32_t> ResourceBundle::word(std::size_t offset) const {
    const auto size = static_cast<std::size_t>(bytes.size());
    if (offset > size || size - offset < sizeof(std::uint32_t)) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (std::size_t index = sizeof value; index > 0; --index) {
        value = value << 8U | static_cast<std::uint8_t>(bytes[static_cast<qsizetype>(offset + index - 1)]);
    }
    return value;
}

std::vector<QByteArray>
ResourceBundle::files(const std::function<bool(std::string_view path)>& wanted) const {
    std::vector<QByteArray> found;
    const auto start = word(rootPointer);
    const auto end = word(rootPointer + 4);
    if (!bytes.startsWith(QByteArrayView(signature.data(), signature.size())) || !start || !end ||
        *end < *start || *start < headerSize) {
        return found;
    }
    const auto bloomWords = word(*start);
    const auto buckets = word(*start + 4);
    if (!bloomWords || !buckets) {
        return found;
    }
    // The items follow the header, the filter and the buckets, up to the end of the table.
    const std::size_t items =
        *start + 8 + (std::size_t{*bloomWords & bloomMask} + std::size_t{*buckets}) * sizeof(std::uint32_t);
    const std::size_t count = items < *end ? std::min((*end - items) / itemSize, mostItems) : 0;
    for (std::size_t index = 0; index < count; ++index) {
        const auto name = path(items, count, index);
        if (!name || !wanted(*name)) {
            continue;
        }
        if (auto file = contents(items + index * itemSize)) {
            found.push_back(std::move(*file));
        }
    }
    return found;
}

/// An item has the end of its path and refers to the item that has what is before it.
std::optional<std::string> ResourceBundle::path(std::size_t items, std::size_t count,
                                                std::size_t index) const {
    std::string whole;
    for (int depth = 0; depth < deepestPath; ++depth) {
        const std::size_t item = items + index * itemSize;
        const auto parent = word(item + 4);
        const auto start = word(item + 8);
        const auto sizes = word(item + 12); // the key's length, and the kind of the value
        const std::size_t length = sizes.value_or(0) & 0xffffU;
        const auto size = static_cast<std::size_t>(bytes.size());
        if (!parent || !start || !sizes || *start > size || size - *start < length ||
            whole.size() + length > longestPath) {
            return std::nullopt;
        }
        whole.insert(0, bytes.constData() + *start, length);
        if (*parent == noParent) {
            return whole;
        }
        if (*parent >= count) {
            return std::nullopt;
        }
        index = *parent;
    }
    return std::nullopt;
}

/// A variant that holds (uuay): the size when unpacked, flags and the bytes.
std::optional<QByteArray> ResourceBundle::contents(std::size_t item) const {
    const auto kind = word(item + 12);
    const auto start = word(item + 16);
    const auto end = word(item + 20);
    if (!kind || (*kind >> 16U & 0xffU) != 'v' || !start || !end || *end < *start ||
        *end > static_cast<std::size_t>(bytes.size())) {
        return std::nullopt;
    }
    const auto value = bytes.sliced(*start, *end - *start);
    const auto size = word(*start);
    const auto flags = word(*start + 4);
    constexpr qsizetype prefix = 8;
    const auto suffix = static_cast<qsizetype>(contentsType.size());
    if (value.size() < prefix + suffix || !size || *size > largestFile || !flags ||
        !value.endsWith(QByteArrayView(contentsType.data(), suffix))) {
        return std::nullopt;
    }
    const auto data = value.sliced(prefix, value.size() - prefix - suffix);
    if ((*flags & compressedFlag) == 0) {
        return data.first(std::min<qsizetype>(data.size(), *size));
    }
    // The unpacked size in front, most significant byte first, is how Qt wants it.
    QByteArray packed;
    for (int shift = 24; shift >= 0; shift -= 8) {
        packed += static_cast<char>(*size >> static_cast<unsigned>(shift) & 0xffU);
    }
    auto unpacked = qUncompress(packed + data);
    return unpacked.size() > static_cast<qsizetype>(largestFile) ? std::nullopt
                                                                 : std::optional(std::move(unpacked));
}

} // namespace orvantile::platform::menus
