#include "platform/linux/x11/X11Activation.h"

#include "platform/linux/x11/StartupNotice.h"

#include <QGuiApplication>
#include <bit>
#include <utility>

namespace orvantile::platform::x11 {
namespace {

constexpr auto startupVariable = "DESKTOP_STARTUP_ID";

} // namespace

X11Activation::X11Activation(XConnection& connection_)
    : connection(connection_),
      clock(xcb_generate_id(connection.get())) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, clock, connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    token = connection.listen([this](const auto& event) { handle(event); });
}

X11Activation::~X11Activation() {
    xcb_destroy_window(connection.get(), clock);
    connection.flush();
}

void X11Activation::bringToFront(std::uintptr_t window) {
    wanted = static_cast<xcb_window_t>(window);
    constexpr std::uint8_t bitsOfText = 8;
    xcb_change_property(connection.get(), XCB_PROP_MODE_APPEND, clock, connection.atoms().name,
                        connection.atoms().utf8String, bitsOfText, 0, nullptr);
    if (const auto launch = qgetenv(startupVariable); !launch.isEmpty()) {
        qunsetenv(startupVariable);
        broadcastStartupText(connection.get(), connection.root(), connection.atoms(), endOfStartup(launch));
    }
    connection.flush();
}

void X11Activation::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    if ((event.response_type & withoutSentFlag) != XCB_PROPERTY_NOTIFY || wanted == XCB_NONE) {
        return;
    }
    const auto* change = std::bit_cast<const xcb_property_notify_event_t*>(&event);
    if (change->window == clock) {
        ask(std::exchange(wanted, XCB_NONE), change->time);
    }
}

void X11Activation::ask(xcb_window_t window, xcb_timestamp_t time) const {
    const auto* toolkit = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (toolkit == nullptr) {
        return;
    }
    constexpr std::uint32_t byTheUser = 2; // 1 would be: by the application
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection.atoms().activeWindow;
    message.data.data32[0] = byTheUser;
    message.data.data32[1] = time;
    // On the connection on which the window is shown: the window manager hears of that first.
    xcb_send_event(toolkit->connection(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   std::bit_cast<const char*>(&message));
    xcb_flush(toolkit->connection());
}

} // namespace orvantile::platform::x11
