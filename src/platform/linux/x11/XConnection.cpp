#include "platform/linux/x11/XConnection.h"

#include <QAbstractEventDispatcher>
#include <QSocketNotifier>
#include <utility>
#include <xcb/xcbext.h>

namespace orvantile::platform::x11 {
namespace {

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number > 0 && screens.rem > 0) {
        xcb_screen_next(&screens);
        --number;
    }
    return screens.rem > 0 ? screens.data : nullptr;
}

/// Whether `earlier` is not after `later` on the wrapping count of requests.
bool notAfter(std::uint32_t earlier, std::uint32_t later) {
    return static_cast<std::int32_t>(earlier - later) <= 0;
}

} // namespace

std::unique_ptr<XConnection> XConnection::open() {
    int number = 0;
    Handle handle(xcb_connect(nullptr, &number));
    if (xcb_connection_has_error(handle.get()) != 0) {
        return nullptr;
    }
    const auto* screen = screenOf(handle.get(), number);
    if (screen == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<XConnection>(new XConnection(std::move(handle), *screen, number));
}

XConnection::XConnection(Handle connection_, const xcb_screen_t& screen, int screenNumber)
    : connection(std::move(connection_)),
      defaultScreen(&screen),
      names(Atoms::intern(get(), screenNumber)),
      notifier(std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(get()), QSocketNotifier::Read)) {
    QObject::connect(notifier.get(), &QSocketNotifier::activated, &context, [this] { process(true); });
    // Waiting for one reply or sending much may have read events that the socket no longer announces.
    if (auto* dispatcher = QAbstractEventDispatcher::instance()) {
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &context,
                         [this] { process(false); });
    }
}

XConnection::~XConnection() = default;

void XConnection::selectRootEvents(std::uint32_t mask) {
    rootEvents |= mask;
    xcb_change_window_attributes(get(), root(), XCB_CW_EVENT_MASK, &rootEvents);
}

XConnection::Token XConnection::listen(Listener listener) {
    auto token = std::make_shared<const Listener>(std::move(listener));
    listeners.push_back(token);
    return token;
}

void XConnection::flush() {
    xcb_flush(get());
}

void XConnection::synchronize() {
    const Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(get(), xcb_get_input_focus(get()), nullptr));
    drain();
}

bool XConnection::isOpen() const {
    return xcb_connection_has_error(connection.get()) == 0;
}

bool isServerReachable() {
    auto* connection = xcb_connect(nullptr, nullptr);
    const bool reachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return reachable;
}

void XConnection::process(bool readSocket) {
    if (processing || closed) {
        return;
    }
    processing = true;
    const auto next = [&] {
        return Reply<xcb_generic_event_t>(readSocket ? xcb_poll_for_event(get())
                                                     : xcb_poll_for_queued_event(get()));
    };
    for (auto event = next(); event; event = next()) {
        deliverReplies(&event->full_sequence);
        constexpr std::uint8_t error = 0;
        if (event->response_type != error) {
            dispatch(*event);
        }
    }
    deliverReplies(nullptr);
    flush();
    processing = false;
    if (!isOpen() && !std::exchange(closed, true)) {
        notifier->setEnabled(false);
        if (onClosed) {
            onClosed();
        }
    }
}

void XConnection::dispatch(const xcb_generic_event_t& event) {
    std::erase_if(listeners, [](const auto& listener) { return listener.expired(); });
    const auto current = listeners;
    for (const auto& weak : current) {
        if (const auto listener = weak.lock()) {
            (*listener)(event);
        }
    }
}

void XConnection::deliverReplies(const std::uint32_t* sequence) {
    while (!pending.empty()) {
        if (sequence != nullptr && !notAfter(pending.front().sequence, *sequence)) {
            return;
        }
        void* reply = nullptr;
        xcb_generic_error_t* error = nullptr;
        if (xcb_poll_for_reply(get(), pending.front().sequence, &reply, &error) == 0) {
            return;
        }
        const Reply<void> ownedReply(reply);
        const Reply<xcb_generic_error_t> ownedError(error);
        const auto handler = std::move(pending.front().handler);
        pending.pop_front();
        handler(reply);
    }
}

} // namespace orvantile::platform::x11
