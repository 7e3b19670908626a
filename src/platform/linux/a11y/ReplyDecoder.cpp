#include "platform/linux/a11y/ReplyDecoder.h"

#include <QByteArrayView>
#include <QStringDecoder>
#include <cstring>
#include <string_view>

namespace orvantile::platform::a11y {
namespace {

std::optional<std::string_view> readView(sd_bus_message& message, char type, std::size_t longest) {
    const char* text = nullptr;
    if (sd_bus_message_read_basic(&message, type, &text) <= 0 || text == nullptr) {
        return std::nullopt;
    }
    const auto length = strnlen(text, longest + 1);
    return length > longest ? std::nullopt : std::optional(std::string_view(text, length));
}

std::optional<QString> decode(std::optional<std::string_view> bytes) {
    if (!bytes) {
        return std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(QByteArrayView(bytes->data(), static_cast<qsizetype>(bytes->size())));
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

template <typename Number>
std::optional<Number> readBasic(sd_bus_message& message, char type) {
    Number value{};
    return sd_bus_message_read_basic(&message, type, &value) > 0 ? std::optional(value) : std::nullopt;
}

/// Reads what `read` reads inside a variant of the type `contents`.
template <typename Read>
auto insideVariant(sd_bus_message& message, const char* contents, Read read) -> decltype(read(message)) {
    if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_VARIANT, contents) <= 0) {
        return std::nullopt;
    }
    auto value = read(message);
    if (!value || sd_bus_message_exit_container(&message) < 0) {
        return std::nullopt;
    }
    return value;
}

} // namespace

bool isAnswer(sd_bus_message& message) {
    return sd_bus_message_is_method_error(&message, nullptr) == 0;
}

bool isSilence(sd_bus_message& message) {
    return sd_bus_message_is_method_error(&message, SD_BUS_ERROR_NO_REPLY) > 0 ||
           sd_bus_message_is_method_error(&message, SD_BUS_ERROR_TIMEOUT) > 0;
}

std::optional<std::string> readBytes(sd_bus_message& message, std::size_t longest) {
    const auto view = readView(message, SD_BUS_TYPE_STRING, longest);
    return view ? std::optional<std::string>(*view) : std::nullopt;
}

std::optional<std::string> readPath(sd_bus_message& message) {
    const auto view = readView(message, SD_BUS_TYPE_OBJECT_PATH, longestPath);
    return view ? std::optional<std::string>(*view) : std::nullopt;
}

std::optional<QString> readText(sd_bus_message& message) {
    return decode(readView(message, SD_BUS_TYPE_STRING, longestText));
}

std::optional<std::int32_t> readInteger(sd_bus_message& message) {
    return readBasic<std::int32_t>(message, SD_BUS_TYPE_INT32);
}

std::optional<std::uint32_t> readNumber(sd_bus_message& message) {
    return readBasic<std::uint32_t>(message, SD_BUS_TYPE_UINT32);
}

std::optional<QString> readVariantText(sd_bus_message& message) {
    return insideVariant(message, "s", [](sd_bus_message& inside) { return readText(inside); });
}

std::optional<bool> readVariantBoolean(sd_bus_message& message) {
    const auto value = insideVariant(message, "b", [](sd_bus_message& inside) {
        return readBasic<int>(inside, SD_BUS_TYPE_BOOLEAN); // an int is what the library fills
    });
    return value ? std::optional(*value != 0) : std::nullopt;
}

std::optional<ObjectReference> readVariantReference(sd_bus_message& message) {
    return insideVariant(message, "(so)", [](sd_bus_message& inside) { return readReference(inside); });
}

std::optional<ObjectReference> readReference(sd_bus_message& message) {
    if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_STRUCT, "so") <= 0) {
        return std::nullopt;
    }
    const auto name = readView(message, SD_BUS_TYPE_STRING, longestPath);
    const auto path = name ? readView(message, SD_BUS_TYPE_OBJECT_PATH, longestPath) : std::nullopt;
    if (!path || sd_bus_message_exit_container(&message) < 0) {
        return std::nullopt;
    }
    return ObjectReference{std::string(*name), std::string(*path)};
}

std::optional<StateSet> readStates(sd_bus_message& message) {
    const void* words = nullptr;
    std::size_t bytes = 0;
    if (sd_bus_message_read_array(&message, SD_BUS_TYPE_UINT32, &words, &bytes) <= 0 ||
        bytes < sizeof(std::uint32_t)) {
        return std::nullopt;
    }
    std::uint32_t low = 0;
    std::uint32_t high = 0;
    std::memcpy(&low, words, sizeof low);
    if (bytes >= 2 * sizeof high) {
        std::memcpy(&high, static_cast<const char*>(words) + sizeof low, sizeof high);
    }
    return StateSet(static_cast<std::uint64_t>(high) << 32U | low);
}

ReferenceList::ReferenceList(sd_bus_message& message_) {
    if (sd_bus_message_enter_container(&message_, SD_BUS_TYPE_ARRAY, "(so)") > 0) {
        message.reset(sd_bus_message_ref(&message_));
    }
}

std::vector<ObjectReference> ReferenceList::next(std::size_t count) {
    std::vector<ObjectReference> references;
    while (message && references.size() < count) {
        auto reference = readReference(*message);
        if (!reference) {
            message.reset();
            break;
        }
        references.push_back(std::move(*reference));
    }
    if (message && sd_bus_message_at_end(message.get(), 0) != 0) {
        message.reset();
    }
    return references;
}

} // namespace orvantile::platform::a11y
