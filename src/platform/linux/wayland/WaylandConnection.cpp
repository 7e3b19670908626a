#include "platform/linux/wayland/WaylandConnection.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cerrno>
#include <utility>

namespace orvantile::platform::wayland {

std::unique_ptr<WaylandConnection> WaylandConnection::open() {
    // Without a name the library would take the first compositor of the user, which may be that of another
    // session.
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        return nullptr;
    }
    DisplayHandle handle(wl_display_connect(nullptr));
    if (!handle) {
        return nullptr;
    }
    return std::unique_ptr<WaylandConnection>(new WaylandConnection(std::move(handle)));
}

WaylandConnection::WaylandConnection(DisplayHandle display_)
    : display(std::move(display_)),
      readable(std::make_unique<QSocketNotifier>(QSocketNotifier::Read)),
      writable(std::make_unique<QSocketNotifier>(QSocketNotifier::Write)) {
    if (QCoreApplication::instance() == nullptr) {
        return; // a first look, before there is a main loop
    }
    readable->setSocket(descriptor());
    writable->setSocket(descriptor());
    readable->setEnabled(true);
    QObject::connect(readable.get(), &QSocketNotifier::activated, readable.get(), [this] { read(); });
    QObject::connect(writable.get(), &QSocketNotifier::activated, writable.get(), [this] { flush(); });
}

WaylandConnection::~WaylandConnection() = default;

void WaylandConnection::read() {
    while (wl_display_prepare_read(get()) != 0) {
        if (wl_display_dispatch_pending(get()) < 0) {
            close();
            return;
        }
    }
    if (wl_display_read_events(get()) < 0 || wl_display_dispatch_pending(get()) < 0) {
        close();
        return;
    }
    flush();
}

void WaylandConnection::flush() {
    const bool sent = wl_display_flush(get()) >= 0;
    writable->setEnabled(!sent && errno == EAGAIN);
}

void WaylandConnection::synchronize() {
    if (wl_display_roundtrip(get()) < 0) {
        close();
    }
}

void WaylandConnection::close() {
    if (std::exchange(closed, true)) {
        return;
    }
    readable->setEnabled(false);
    writable->setEnabled(false);
    if (wl_display_get_error(get()) != EPROTO && onGone) {
        onGone();
    }
}

} // namespace orvantile::platform::wayland
