#include "platform/linux/x11/Properties.h"

#include <memory>
#include <xcb/res.h>

namespace orvantile::platform::x11 {
namespace {

constexpr std::int32_t unknown = -1;

std::int32_t processOf(const xcb_res_query_client_ids_reply_t* reply) {
    if (reply == nullptr) {
        return unknown;
    }
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if ((id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(id.data) > 0) {
            const auto process = static_cast<std::int32_t>(*xcb_res_client_id_value_value(id.data));
            return process > 0 ? process : unknown;
        }
    }
    return unknown;
}

} // namespace

xcb_get_property_cookie_t requestProperty(XConnection& connection, xcb_window_t window, xcb_atom_t property,
                                          std::uint32_t maximum) {
    return xcb_get_property(connection.get(), 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, maximum);
}

std::span<const std::uint32_t> words(const xcb_get_property_reply_t* reply) {
    constexpr std::uint8_t wordFormat = 32;
    if (reply == nullptr || reply->format != wordFormat) {
        return {};
    }
    return {static_cast<const std::uint32_t*>(xcb_get_property_value(reply)), reply->value_len};
}

QString text(const xcb_get_property_reply_t* reply, const Atoms& atoms) {
    constexpr std::uint8_t byteFormat = 8;
    if (reply == nullptr || reply->format != byteFormat) {
        return {};
    }
    const QByteArrayView bytes(static_cast<const char*>(xcb_get_property_value(reply)),
                               xcb_get_property_value_length(reply));
    return reply->type == atoms.utf8String ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
}

void askProcess(XConnection& connection, xcb_window_t window, std::function<void(std::int32_t)> answer) {
    const auto found = std::make_shared<std::int32_t>(unknown);
    const auto* resources = xcb_get_extension_data(connection.get(), &xcb_res_id);
    if (resources != nullptr && resources->present != 0) {
        const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        connection.ask<xcb_res_query_client_ids_reply_t>(
            xcb_res_query_client_ids(connection.get(), 1, &spec),
            [found](const auto* reply) { *found = processOf(reply); });
    }
    connection.ask<xcb_get_property_reply_t>(
        requestProperty(connection, window, connection.atoms().pid, 1),
        [found, answer = std::move(answer)](const auto* reply) {
            const auto declared = words(reply);
            const bool usable =
                *found == unknown && !declared.empty() && static_cast<std::int32_t>(declared.front()) > 0;
            answer(usable ? static_cast<std::int32_t>(declared.front()) : *found);
        });
}

} // namespace orvantile::platform::x11
