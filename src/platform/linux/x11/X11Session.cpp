#include "platform/linux/x11/X11Session.h"

#include <utility>

namespace orvantile::platform::x11 {

X11Session::X11Session(XConnection& connection_)
    : connection(connection_),
      focused(connection),
      menus(connection),
      keyboard(connection) {}

void X11Session::start() {
    focused.onChanged = [this](const auto& window) {
        if (onActiveWindowChanged) {
            onActiveWindowChanged(window);
        }
    };
    menus.onOpened = [this](std::int32_t process) {
        if (onMenuOpened) {
            onMenuOpened(process);
        }
    };
    menus.onClosed = [this](std::int32_t process) {
        if (onMenuClosed) {
            onMenuClosed(process);
        }
    };
    keyboard.onPressed = [this](keys::Candidates candidates) {
        held.push_back(std::move(candidates));
        releaseKeys();
    };
    focused.onResolved = [this] { releaseKeys(); };
    menus.onResolved = [this] { releaseKeys(); };
    focused.start();
    menus.start();
    connection.flush();
}

void X11Session::releaseKeys() {
    while (!held.empty() && !focused.isResolving() && !menus.isResolving()) {
        const auto candidates = std::move(held.front());
        held.pop_front();
        if (onKeyPressed) {
            onKeyPressed(candidates);
        }
    }
}

std::optional<session::ActiveWindow> X11Session::activeWindow() const {
    return focused.window();
}

int X11Session::openMenus(std::int32_t processIdentifier) const {
    return menus.open(processIdentifier);
}

bool X11Session::hearsKeys() const {
    return keyboard.hears() && connection.isOpen();
}

void X11Session::drain() {
    connection.drain();
}

} // namespace orvantile::platform::x11
