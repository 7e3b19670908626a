#include "platform/linux/desktop/launch/LaunchToken.h"

#include <array>
#include <string_view>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

struct Field {
    QByteArray LaunchToken::*value;
    const char* variable;
    const char* key;
};

constexpr std::array fields{
    Field{&LaunchToken::startupId, "DESKTOP_STARTUP_ID", "desktop-startup-id"},
    Field{&LaunchToken::activationToken, "XDG_ACTIVATION_TOKEN", "activation-token"},
};

/// Longer ones are no tokens.
constexpr qsizetype mostBytes = 1024;

bool readEntry(sd_bus_message* message, LaunchToken& token) {
    const char* key = nullptr;
    const char* contents = nullptr;
    if (sd_bus_message_read(message, "s", &key) <= 0) {
        return false;
    }
    for (const auto& field : fields) {
        if (std::string_view(key) != field.key) {
            continue;
        }
        if (sd_bus_message_peek_type(message, nullptr, &contents) <= 0) {
            return false;
        }
        const char* text = nullptr;
        if (std::string_view(contents) != "s") {
            break;
        }
        if (sd_bus_message_read(message, "v", "s", &text) <= 0) {
            return false;
        }
        if (QByteArray value(text); value.size() <= mostBytes) {
            token.*field.value = std::move(value);
        }
        return true;
    }
    return sd_bus_message_skip(message, "v") >= 0;
}

} // namespace

LaunchToken LaunchToken::fromEnvironment() {
    LaunchToken token;
    for (const auto& field : fields) {
        token.*field.value = qgetenv(field.variable).left(mostBytes);
    }
    return token;
}

LaunchToken LaunchToken::read(sd_bus_message* message) {
    LaunchToken token;
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) {
        return {};
    }
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        if (!readEntry(message, token) || sd_bus_message_exit_container(message) < 0) {
            return {};
        }
    }
    return token;
}

LaunchToken LaunchToken::ofBar(const char* activationToken) {
    LaunchToken token;
    if (QByteArray value(activationToken); value.size() <= mostBytes) {
        token.activationToken = std::move(value);
    }
    return token;
}

void LaunchToken::append(sd_bus_message* message) const {
    sd_bus_message_open_container(message, SD_BUS_TYPE_ARRAY, "{sv}");
    for (const auto& field : fields) {
        if (const auto& value = this->*field.value; !value.isEmpty()) {
            sd_bus_message_append(message, "{sv}", field.key, "s", value.constData());
        }
    }
    sd_bus_message_close_container(message);
}

void LaunchToken::clearEnvironment() {
    for (const auto& field : fields) {
        qunsetenv(field.variable);
    }
}

void LaunchToken::putIntoEnvironment() const {
    for (const auto& field : fields) {
        if (const auto& value = this->*field.value; !value.isEmpty()) {
            qputenv(field.variable, value);
        }
    }
}

} // namespace orvantile::platform::desktop
