#include "macos/shell/recording/ArgumentText.h"

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace orvantile::test {
namespace {

std::string numberText(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

/// Hands out the arguments in order, from where the calling convention puts each kind.
class ArgumentReader {
public:
    explicit ArgumentReader(const objc::Arguments& arguments_) : arguments(arguments_) {}

    std::uint64_t integer() {
        return nextInteger < arguments.integerCount ? arguments.integers[nextInteger++]
                                                    : arguments.stack[nextStack++];
    }

    double real() {
        constexpr int registers = 8;
        return nextVector < registers ? arguments.vectors[std::size_t{2} * nextVector++]
                                      : std::bit_cast<double>(arguments.stack[nextStack++]);
    }

    double realInMemory() { return std::bit_cast<double>(arguments.stack[nextStack++]); }

private:
    const objc::Arguments& arguments;
    int nextInteger = 0;
    std::size_t nextVector = 0;
    std::size_t nextStack = 0;
};

/// The encodings of the arguments behind receiver and selector, without the stack offsets.
std::vector<std::string> argumentTypes(std::string_view types) {
    std::vector<std::string> all;
    while (!types.empty()) {
        std::size_t length = 0;
        int depth = 0;
        while (length < types.size()) {
            const char c = types[length];
            depth += c == '{' ? 1 : c == '}' ? -1 : 0;
            if (depth == 0 && c >= '0' && c <= '9') {
                break;
            }
            ++length;
        }
        all.emplace_back(types.substr(0, length));
        const auto rest = types.find_first_not_of("0123456789", length);
        types.remove_prefix(rest == std::string_view::npos ? types.size() : rest);
    }
    constexpr std::ptrdiff_t hidden = 3; // result, receiver, selector
    all.erase(all.begin(), all.begin() + hidden);
    return all;
}

std::string argumentText(std::string_view type, ArgumentReader& reader) {
    while (type.starts_with('r') || type.starts_with('n') || type.starts_with('N')) {
        type.remove_prefix(1);
    }
    if (type.starts_with("{CGRect")) {
        std::string text = "{" + numberText(reader.realInMemory());
        for (int part = 1; part < 4; ++part) {
            text += ", " + numberText(reader.realInMemory());
        }
        return text + "}";
    }
    if (type.starts_with("{CGSize")) {
        const auto width = numberText(reader.real());
        return "{" + width + ", " + numberText(reader.real()) + "}";
    }
    if (type == "d") {
        return numberText(reader.real());
    }
    if (type.starts_with("@?")) {
        return reader.integer() != 0 ? "block" : "nil";
    }
    const auto value = reader.integer();
    switch (type.empty() ? '?' : type.front()) {
    case '@':
        return objectText(reinterpret_cast<const void*>(value));
    case ':':
        return value != 0 ? reinterpret_cast<const char*>(value) : "nil";
    case '#':
        return reinterpret_cast<const objc::Class*>(value)->data->name;
    case 'B':
        return (value & 0xff) != 0 ? "YES" : "NO";
    case 'q':
        return std::to_string(static_cast<std::int64_t>(value));
    case 'i':
        return std::to_string(static_cast<std::int32_t>(value));
    case 'Q':
        return std::to_string(value);
    case '^':
    case '*':
        return value != 0 ? "pointer" : "null";
    default:
        std::fprintf(stderr, "no text for arguments of type %.*s\n", static_cast<int>(type.size()),
                     type.data());
        std::abort();
    }
}

} // namespace

std::string messageText(const char* selector, const char* types, const objc::Arguments& arguments) {
    ArgumentReader reader(arguments);
    std::string text;
    std::string_view name = selector;
    for (const auto& type : argumentTypes(types)) {
        const auto colon = name.find(':') + 1;
        text += (text.empty() ? "" : " ") + std::string(name.substr(0, colon)) + argumentText(type, reader);
        name.remove_prefix(colon);
    }
    return text.empty() ? std::string(name) : text;
}

} // namespace orvantile::test
