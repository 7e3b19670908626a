#include "platform/linux/desktop/SettingsPortal.h"

#include "platform/linux/a11y/ReplyDecoder.h"
#include "platform/linux/desktop/ThemeName.h"

#include <QtGlobal>
#include <string_view>

namespace orvantile::platform::desktop {
namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop";
constexpr auto portalPath = "/org/freedesktop/portal/desktop";
constexpr auto settings = "org.freedesktop.portal.Settings";

constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto interface = "org.gnome.desktop.interface";
constexpr auto colorScheme = "color-scheme";
constexpr auto theme = "gtk-theme";

/// The type of the value inside a variant, or inside variants in it, which is entered; 0 when there is none.
char enterVariants(sd_bus_message& message) {
    constexpr int deepest = 3;
    for (int depth = 0; depth < deepest; ++depth) {
        char type = 0;
        const char* contents = nullptr;
        if (sd_bus_message_peek_type(&message, &type, &contents) <= 0) {
            return 0;
        }
        if (type != SD_BUS_TYPE_VARIANT) {
            return type;
        }
        if (sd_bus_message_enter_container(&message, SD_BUS_TYPE_VARIANT, contents) <= 0) {
            return 0;
        }
    }
    return 0;
}

std::optional<bool> schemeOf(std::uint32_t value) {
    constexpr std::uint32_t preferDark = 1;
    constexpr std::uint32_t preferLight = 2;
    return value == preferDark || value == preferLight ? std::optional(value == preferDark) : std::nullopt;
}

std::optional<bool> schemeOf(const std::string& value) {
    return value == "prefer-dark" || value == "prefer-light" ? std::optional(value == "prefer-dark")
                                                             : std::nullopt;
}

/// A name that is not dark says nothing: it is what every desktop but GNOME's leaves at its default.
std::optional<bool> themeOf(const std::string& value) {
    return isDarkThemeName(QString::fromStdString(value)) ? std::optional(true) : std::nullopt;
}

} // namespace

SettingsPortal::SettingsPortal(const std::string& sessionBus) : connection(nullptr) {
    if (!connection.open(sessionBus)) {
        return;
    }
    changes = connection.subscribe(
        "type='signal',sender='org.freedesktop.portal.Desktop',path='/org/freedesktop/portal/desktop',"
        "interface='org.freedesktop.portal.Settings',member='SettingChanged'",
        [this](sd_bus_message& message) {
            const auto space = a11y::readBytes(message);
            const auto key = a11y::readBytes(message);
            if (space && key) {
                take(*space, *key, message);
            }
        });
    owners =
        connection.subscribe("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                             "member='NameOwnerChanged',arg0='org.freedesktop.portal.Desktop'",
                             [this](sd_bus_message& message) {
                                 const auto name = a11y::readBytes(message);
                                 const auto before = a11y::readBytes(message);
                                 const auto now = a11y::readBytes(message);
                                 if (now && !now->empty()) {
                                     readAll();
                                 }
                             });
    readAll();
}

std::string SettingsPortal::sessionBusAddress() {
    const auto address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        return address.toStdString();
    }
    const auto runtime = qgetenv("XDG_RUNTIME_DIR");
    return runtime.isEmpty() ? std::string() : "unix:path=" + runtime.toStdString() + "/bus";
}

std::optional<bool> SettingsPortal::isDark() const {
    for (const auto& source : {scheme, gnomeScheme, gnomeTheme}) {
        if (source) {
            return source;
        }
    }
    return std::nullopt;
}

void SettingsPortal::readAll() {
    constexpr auto method = "Read"; // which all have; their successors may only know its replacement
    read(method, appearance, colorScheme);
    read(method, interface, colorScheme);
    read(method, interface, theme);
}

void SettingsPortal::read(const char* method, const char* space, const char* key) {
    auto message = connection.method(portal, portalPath, settings, method);
    if (!message || sd_bus_message_append(message.get(), "ss", space, key) < 0) {
        return;
    }
    // A portal that hangs answers once it goes on.
    connection.call(
        std::move(message), answersWanted,
        [this, method = std::string_view(method), space, key](sd_bus_message& answer) {
            if (a11y::isAnswer(answer)) {
                take(space, key, answer);
            } else if (method == "Read" &&
                       sd_bus_message_is_method_error(&answer, SD_BUS_ERROR_UNKNOWN_METHOD) > 0) {
                read("ReadOne", space, key);
            }
        },
        a11y::BusConnection::endless);
}

void SettingsPortal::take(const std::string& space, const std::string& key, sd_bus_message& value) {
    const auto before = isDark();
    const char type = enterVariants(value);
    if (space == appearance && key == colorScheme) {
        scheme = type == SD_BUS_TYPE_UINT32 ? schemeOf(a11y::readNumber(value).value_or(0)) : std::nullopt;
    } else if (space == interface && (key == colorScheme || key == theme)) {
        const auto text =
            type == SD_BUS_TYPE_STRING ? a11y::readBytes(value).value_or(std::string()) : std::string();
        (key == theme ? gnomeTheme : gnomeScheme) = key == theme ? themeOf(text) : schemeOf(text);
    }
    if (isDark() != before && onChanged) {
        onChanged();
    }
}

} // namespace orvantile::platform::desktop
