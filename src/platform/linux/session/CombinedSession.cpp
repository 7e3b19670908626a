#include "platform/linux/session/CombinedSession.h"

namespace orvantile::platform::session {
namespace {

/// The windows of both are numbered on their own.
constexpr std::uint64_t ofOuter = std::uint64_t{1} << 63U;

} // namespace

CombinedSession::CombinedSession(DesktopSession& inner_, DesktopSession& outer_)
    : inner(inner_),
      outer(outer_) {
    pass(inner);
    pass(outer);
}

CombinedSession::~CombinedSession() {
    for (auto* each : {&inner, &outer}) {
        each->onActiveWindowChanged = nullptr;
        each->onKeyPressed = nullptr;
        each->onMenuOpened = nullptr;
        each->onMenuClosed = nullptr;
    }
}

/// What the one that is not in front tells is about something else, or has been told by the other already.
void CombinedSession::pass(DesktopSession& from) {
    from.onActiveWindowChanged = [this](const auto&) { windowChanged(); };
    from.onKeyPressed = [this, &from](const auto& candidates) {
        if (&from == &front() && onKeyPressed) {
            onKeyPressed(candidates);
        }
    };
    from.onMenuOpened = [this, &from](std::int32_t process) {
        if (&from == &front() && onMenuOpened) {
            onMenuOpened(process);
        }
    };
    from.onMenuClosed = [this, &from](std::int32_t process) {
        if (&from == &front() && onMenuClosed) {
            onMenuClosed(process);
        }
    };
}

DesktopSession& CombinedSession::front() const {
    return inner.activeWindow() ? inner : outer;
}

void CombinedSession::windowChanged() {
    auto now = activeWindow();
    if (now == announced) {
        return;
    }
    announced = std::move(now);
    if (onActiveWindowChanged) {
        onActiveWindowChanged(announced);
    }
}

void CombinedSession::start() {
    inner.start();
    outer.start();
}

std::optional<ActiveWindow> CombinedSession::activeWindow() const {
    if (auto window = inner.activeWindow()) {
        return window;
    }
    auto window = outer.activeWindow();
    if (window) {
        window->handle |= ofOuter;
    }
    return window;
}

int CombinedSession::openMenus(std::int32_t processIdentifier) const {
    return front().openMenus(processIdentifier);
}

bool CombinedSession::hearsKeys() const {
    return inner.hearsKeys() || outer.hearsKeys();
}

QString CombinedSession::keySources() const {
    return outer.keySources() + inner.keySources();
}

void CombinedSession::drain() {
    inner.drain();
    outer.drain();
}

} // namespace orvantile::platform::session
