#include "platform/linux/x11/SettingsDecoder.h"

#include <utility>

namespace orvantile::platform::x11 {
namespace {

enum Type : std::uint8_t { integer, text, color };

/// Reads on until something is missing; whatever is read from then on is 0 or empty.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : rest(bytes) {}

    [[nodiscard]] bool isComplete() const { return complete; }

    void setBigEndian(bool big) { bigEndian = big; }

    std::span<const std::uint8_t> take(std::size_t count) {
        complete = complete && count <= rest.size();
        if (!complete) {
            return {};
        }
        return std::exchange(rest, rest.subspan(count)).first(count);
    }

    std::uint32_t number(std::size_t size) {
        const auto bytes = take(size);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            value = (value << 8U) | bytes[bigEndian ? i : bytes.size() - 1 - i];
        }
        return value;
    }

    /// With the bytes that fill its last word.
    std::string string(std::size_t length) {
        const auto bytes = take(length);
        take((4 - length % 4) % 4);
        return {bytes.begin(), bytes.end()};
    }

private:
    std::span<const std::uint8_t> rest;
    bool complete = true;
    bool bigEndian = false;
};

} // namespace

std::optional<SharedSettings> decodeSharedSettings(std::span<const std::uint8_t> bytes) {
    Reader reader(bytes);
    reader.setBigEndian(reader.number(1) == 1);
    reader.take(3);
    reader.number(4); // the serial number of the latest change
    SharedSettings settings;
    for (auto count = reader.number(4); count > 0 && reader.isComplete(); --count) {
        const auto type = reader.number(1);
        reader.take(1);
        const auto length = reader.number(2);
        auto name = reader.string(length);
        reader.number(4); // the serial number of its change
        switch (type) {
        case Type::integer:
            settings.insert_or_assign(std::move(name), static_cast<std::int32_t>(reader.number(4)));
            break;
        case Type::text: {
            const auto size = reader.number(4);
            settings.insert_or_assign(std::move(name), reader.string(size));
            break;
        }
        case Type::color:
            reader.take(8);
            break;
        default:
            return std::nullopt; // of unknown length
        }
    }
    return reader.isComplete() ? std::optional(std::move(settings)) : std::nullopt;
}

} // namespace orvantile::platform::x11
