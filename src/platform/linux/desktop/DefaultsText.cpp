#include "platform/linux/desktop/DefaultsText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

/// What stands for a character that a quoted string cannot hold as it is.
constexpr auto escapes = std::to_array<std::pair<char, char>>(
    {{'"', '"'}, {'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}, {'\0', '0'}});

std::optional<double> number(QByteArrayView text) {
    double result = 0;
    const auto* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, result);
    return error == std::errc() && stop == end ? std::optional(result) : std::nullopt;
}

QByteArray quoted(const QByteArray& utf8) {
    QByteArray result("\"");
    for (const char character : utf8) {
        const auto* escape = std::ranges::find(escapes, character, &std::pair<char, char>::first);
        if (escape == escapes.end()) {
            result.append(character);
        } else {
            result.append('\\').append(escape->second);
        }
    }
    return result.append('"');
}

/// The inside of a quoted string. An escape that does not exist stands for itself.
QByteArray unquoted(QByteArrayView inside) {
    QByteArray result;
    for (qsizetype index = 0; index < inside.size(); ++index) {
        if (inside[index] == '\\' && index + 1 < inside.size()) {
            const auto* escape =
                std::ranges::find(escapes, inside[index + 1], &std::pair<char, char>::second);
            if (escape != escapes.end()) {
                result.append(escape->first);
                ++index;
                continue;
            }
        }
        result.append(inside[index]);
    }
    return result;
}

bool isQuoted(QByteArrayView text) {
    return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

} // namespace

QByteArray textOf(const DefaultsValue& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag ? QByteArray("true") : QByteArray("false");
    }
    if (const auto* amount = std::get_if<double>(&value)) {
        std::array<char, 32> buffer{};
        const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), *amount);
        return {buffer.data(), result.ptr - buffer.data()};
    }
    const auto utf8 = std::get<QString>(value).toUtf8();
    const bool bare =
        utf8 == utf8.trimmed() && !utf8.isEmpty() && utf8.front() != '"' &&
        std::ranges::none_of(
            utf8, [](char character) { return (character >= 0 && character < ' ') || character == 0x7f; }) &&
        valueOf(utf8) == value;
    return bare ? utf8 : quoted(utf8);
}

DefaultsValue valueOf(QByteArrayView text) {
    const auto trimmed = text.trimmed();
    if (trimmed == "true" || trimmed == "false") {
        return trimmed == "true";
    }
    if (const auto amount = number(trimmed)) {
        return *amount;
    }
    if (isQuoted(trimmed)) {
        return QString::fromUtf8(unquoted(trimmed.sliced(1, trimmed.size() - 2)));
    }
    return QString::fromUtf8(trimmed);
}

} // namespace orvantile::platform::desktop
