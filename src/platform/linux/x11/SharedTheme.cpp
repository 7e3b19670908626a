#include "platform/linux/x11/SharedTheme.h"

#include "platform/linux/desktop/ThemeName.h"
#include "platform/linux/x11/Properties.h"
#include "platform/linux/x11/SettingsDecoder.h"

#include <bit>
#include <utility>

namespace orvantile::platform::x11 {
namespace {

std::optional<bool> darknessOf(const SharedSettings& settings) {
    const auto prefersDark = settings.find("Gtk/ApplicationPreferDarkTheme");
    if (prefersDark != settings.end()) {
        const auto* flag = std::get_if<std::int32_t>(&prefersDark->second);
        if (flag != nullptr && *flag != 0) {
            return true;
        }
    }
    const auto theme = settings.find("Net/ThemeName");
    if (theme == settings.end()) {
        return std::nullopt;
    }
    const auto* name = std::get_if<std::string>(&theme->second);
    return name == nullptr || name->empty()
               ? std::nullopt
               : std::optional(desktop::isDarkThemeName(QString::fromStdString(*name)));
}

} // namespace

SharedTheme::SharedTheme(XConnection& connection_) : connection(connection_) {
    connection.selectRootEvents(XCB_EVENT_MASK_STRUCTURE_NOTIFY); // brings word of new managers
    token = connection.listen([this](const auto& event) { handle(event); });
    askManager();
}

void SharedTheme::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    const auto& atoms = connection.atoms();
    switch (event.response_type & withoutSentFlag) {
    case XCB_CLIENT_MESSAGE: {
        const auto* message = std::bit_cast<const xcb_client_message_event_t*>(&event);
        if (message->type == atoms.manager && message->data.data32[1] == atoms.settingsManager) {
            askManager();
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (std::bit_cast<const xcb_destroy_notify_event_t*>(&event)->window == manager &&
            manager != XCB_WINDOW_NONE) {
            askManager();
        }
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto* change = std::bit_cast<const xcb_property_notify_event_t*>(&event);
        if (manager != XCB_WINDOW_NONE && change->window == manager && change->atom == atoms.sharedSettings) {
            askSettings();
        }
        break;
    }
    default:
        break;
    }
}

void SharedTheme::askManager() {
    connection.ask<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection.get(), connection.atoms().settingsManager),
        [this](const auto* reply) {
            manager = reply == nullptr ? xcb_window_t{XCB_WINDOW_NONE} : reply->owner;
            if (manager == XCB_WINDOW_NONE) {
                setDark(std::nullopt);
                return;
            }
            const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            xcb_change_window_attributes(connection.get(), manager, XCB_CW_EVENT_MASK, &events);
            askSettings();
        });
}

void SharedTheme::askSettings() {
    constexpr std::uint32_t mostWords = 64 * 1024;
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, manager, connection.atoms().sharedSettings, mostWords),
        [this](const auto* reply) {
            if (reply == nullptr) {
                return;
            }
            const auto settings =
                decodeSharedSettings({static_cast<const std::uint8_t*>(xcb_get_property_value(reply)),
                                      static_cast<std::size_t>(xcb_get_property_value_length(reply))});
            setDark(settings ? darknessOf(*settings) : std::nullopt);
        });
}

void SharedTheme::setDark(std::optional<bool> nowDark) {
    if (std::exchange(dark, nowDark) != nowDark && onChanged) {
        onChanged();
    }
}

} // namespace orvantile::platform::x11
