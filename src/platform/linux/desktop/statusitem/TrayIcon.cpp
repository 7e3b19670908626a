#include "platform/linux/desktop/statusitem/TrayIcon.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

/// Of the system tray protocol.
constexpr std::uint32_t requestDock = 0;

/// Of the embedding protocol: its version, and that the tray shall map the window.
constexpr std::array<std::uint32_t, 2> embedInfo{0, 1};

/// Until the tray gives the icon its size.
constexpr std::uint16_t preferredSize = 22;

constexpr std::uint8_t alphaDepth = 32;

std::uint8_t eventType(const xcb_generic_event_t& event) {
    return event.response_type & 0x7fU;
}

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

/// The depth of a visual; 0 when there is no such visual.
std::uint8_t depthOf(const xcb_screen_t& screen, xcb_visualid_t visual) {
    for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem > 0; xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == visual) {
                return depths.data->depth;
            }
        }
    }
    return 0;
}

} // namespace

TrayIcon::TrayIcon(std::unique_ptr<TrayConnection> connection_, ShowMenu showMenu_,
                   std::function<QColor()> fallbackColor_)
    : connection(std::move(connection_)),
      showMenu(std::move(showMenu_)),
      fallbackColor(std::move(fallbackColor_)),
      selection(connection->atom("_NET_SYSTEM_TRAY_S" + std::to_string(connection->screenNumber()))),
      managerMessage(connection->atom("MANAGER")),
      colors(connection->atom("_NET_SYSTEM_TRAY_COLORS")) {
    connection->onEvent = [this](const xcb_generic_event_t& event) { handle(event); };
    // A new tray announces itself on the root window.
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection->get(), connection->screen().root, XCB_CW_EVENT_MASK, &mask);
    connection->flush();
}

TrayIcon::~TrayIcon() {
    undock();
}

void TrayIcon::setWanted(bool wanted_) {
    if (std::exchange(wanted, wanted_) == wanted_) {
        return;
    }
    if (wanted) {
        findManager();
    } else {
        undock();
    }
}

void TrayIcon::setSymbol(const std::optional<KeyboardSymbol>& symbol_, const QString& description_) {
    symbol = symbol_;
    description = description_;
    repaint();
}

void TrayIcon::repaint() {
    if (window != XCB_WINDOW_NONE) {
        const QByteArray name = description.toUtf8();
        xcb_change_property(connection->get(), XCB_PROP_MODE_REPLACE, window,
                            connection->atom("_NET_WM_NAME"), connection->atom("UTF8_STRING"), 8,
                            static_cast<std::uint32_t>(name.size()), name.constData());
        paint();
        connection->flush();
    }
}

void TrayIcon::handle(const xcb_generic_event_t& event) {
    switch (eventType(event)) {
    case XCB_CLIENT_MESSAGE:
        if (const auto& message = as<xcb_client_message_event_t>(event);
            message.type == managerMessage && message.data.data32[1] == selection) {
            undock();
            findManager();
        }
        break;
    case XCB_DESTROY_NOTIFY:
        if (const auto& destroyed = as<xcb_destroy_notify_event_t>(event); destroyed.window == manager) {
            manager = XCB_WINDOW_NONE;
            undock();
            findManager();
        }
        break;
    case XCB_CONFIGURE_NOTIFY:
        if (const auto& configured = as<xcb_configure_notify_event_t>(event); configured.window == window) {
            width = configured.width;
            height = configured.height;
            xcb_clear_area(connection->get(), 1, window, 0, 0, 0, 0);
            connection->flush();
        }
        break;
    case XCB_PROPERTY_NOTIFY:
        if (const auto& changed = as<xcb_property_notify_event_t>(event);
            changed.window == manager && changed.atom == colors) {
            repaint();
        }
        break;
    case XCB_EXPOSE:
        if (as<xcb_expose_event_t>(event).count == 0) {
            paint();
            connection->flush();
        }
        break;
    case XCB_BUTTON_PRESS:
        press(as<xcb_button_press_event_t>(event));
        break;
    default:
        break;
    }
}

void TrayIcon::findManager() {
    auto* x = connection->get();
    xcb_grab_server(x);
    const XReply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, selection), nullptr));
    manager = owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
    if (manager != XCB_WINDOW_NONE) {
        // Its end must not be missed between asking and listening.
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(x, manager, XCB_CW_EVENT_MASK, &mask);
    }
    xcb_ungrab_server(x);
    if (wanted && manager != XCB_WINDOW_NONE) {
        dock();
    }
    connection->flush();
}

void TrayIcon::dock() {
    if (window != XCB_WINDOW_NONE) {
        return;
    }
    auto* x = connection->get();
    const auto& screen = connection->screen();
    // The tray says when it can show transparency.
    const auto offered = cardinals(connection->atom("_NET_SYSTEM_TRAY_VISUAL"));
    hasAlpha = !offered.empty() && depthOf(screen, offered.front()) == alphaDepth;
    const auto visual = hasAlpha ? offered.front() : screen.root_visual;
    const auto depth = hasAlpha ? alphaDepth : screen.root_depth;
    width = height = preferredSize;
    colormap = xcb_generate_id(x);
    xcb_create_colormap(x, XCB_COLORMAP_ALLOC_NONE, colormap, screen.root, visual);
    window = xcb_generate_id(x);
    xcb_create_window_value_list_t values{};
    values.background_pixmap = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    values.background_pixel = 0;
    values.border_pixel = 0;
    values.event_mask =
        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS;
    values.colormap = colormap;
    xcb_create_window_aux(x, depth, window, screen.root, 0, 0, preferredSize, preferredSize, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                          (hasAlpha ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP) | XCB_CW_BORDER_PIXEL |
                              XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                          &values);
    constexpr std::string_view windowClass("orvantile\0orvantile\0", 20);
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        windowClass.size(), windowClass.data());
    const auto info = connection->atom("_XEMBED_INFO");
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, info, info, 32, embedInfo.size(), embedInfo.data());

    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = manager;
    request.type = connection->atom("_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = window;
    xcb_send_event(x, 0, manager, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&request));
    repaint();
}

void TrayIcon::undock() {
    if (window != XCB_WINDOW_NONE) {
        xcb_destroy_window(connection->get(), std::exchange(window, XCB_WINDOW_NONE));
        xcb_free_colormap(connection->get(), colormap);
        connection->flush();
    }
}

void TrayIcon::paint() {
    if (window == XCB_WINDOW_NONE || width <= 0 || height <= 0) {
        return;
    }
    auto* x = connection->get();
    auto image = background();
    if (!image) {
        return; // not on the screen yet: an expose event follows
    }
    if (symbol) {
        const int side = std::min(width, height);
        const auto drawn = symbol->draw(side, color(*image));
        QPainter(&*image).drawImage((width - side) / 2, (height - side) / 2, drawn);
    }
    const auto context = xcb_generate_id(x);
    xcb_create_gc(x, context, window, 0, nullptr);
    xcb_put_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context, static_cast<std::uint16_t>(width),
                  static_cast<std::uint16_t>(height), 0, 0, 0,
                  hasAlpha ? alphaDepth : connection->screen().root_depth,
                  static_cast<std::uint32_t>(image->sizeInBytes()), image->constBits());
    xcb_free_gc(x, context);
}

std::optional<QImage> TrayIcon::background() const {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (hasAlpha) {
        return image;
    }
    auto* x = connection->get();
    xcb_clear_area(x, 0, window, 0, 0, 0, 0);
    const XReply<xcb_get_image_reply_t> behind(xcb_get_image_reply(
        x,
        xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), ~0U),
        nullptr));
    const auto size = static_cast<std::size_t>(image.sizeInBytes());
    if (!behind || static_cast<std::size_t>(xcb_get_image_data_length(behind.get())) != size) {
        return std::nullopt;
    }
    QImage opaque(width, height, QImage::Format_RGB32);
    std::memcpy(opaque.bits(), xcb_get_image_data(behind.get()), size);
    return opaque.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QColor TrayIcon::color(const QImage& background) const {
    const auto told = cardinals(colors);
    if (told.size() >= 3) {
        const auto component = [&told](std::size_t index) {
            return static_cast<quint16>(std::min<std::uint32_t>(told[index], 0xffff));
        };
        return QColor::fromRgba64(component(0), component(1), component(2));
    }
    if (hasAlpha) {
        return fallbackColor();
    }
    const QColor behind =
        background.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixelColor(0, 0);
    return inkOn(behind);
}

std::vector<std::uint32_t> TrayIcon::cardinals(xcb_atom_t property) const {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection->get(),
        xcb_get_property(connection->get(), 0, manager, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 16),
        nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    std::vector<std::uint32_t> values(static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) /
                                      sizeof(std::uint32_t));
    std::memcpy(values.data(), xcb_get_property_value(reply.get()), values.size() * sizeof(std::uint32_t));
    return values;
}

void TrayIcon::press(const xcb_button_press_event_t& event) {
    // The server has grabbed the pointer for this press; the menu needs it.
    xcb_ungrab_pointer(connection->get(), event.time);
    connection->flush();
    if (event.detail == XCB_BUTTON_INDEX_1 || event.detail == XCB_BUTTON_INDEX_3) {
        showMenu({event.root_x, event.root_y});
    }
}

} // namespace orvantile::platform::desktop
