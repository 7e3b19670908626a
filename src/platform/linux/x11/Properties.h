#pragma once

#include "platform/linux/x11/XConnection.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <span>

namespace orvantile::platform::x11 {

/// Asks for at most `maximum` words of a property.
[[nodiscard]] xcb_get_property_cookie_t requestProperty(XConnection& connection, xcb_window_t window,
                                                        xcb_atom_t property, std::uint32_t maximum);

/// The value as words; empty when absent or of another format.
[[nodiscard]] std::span<const std::uint32_t> words(const xcb_get_property_reply_t* reply);

/// The value as text; UTF-8 or the old Latin text type, empty when absent.
[[nodiscard]] QString text(const xcb_get_property_reply_t* reply, const Atoms& atoms);

/// Finds out which process a window belongs to: what the server knows about the connection, which holds even
/// for sandboxed programs, else what the window says. −1 when neither tells.
void askProcess(XConnection& connection, xcb_window_t window, std::function<void(std::int32_t)> answer);

} // namespace orvantile::platform::x11
