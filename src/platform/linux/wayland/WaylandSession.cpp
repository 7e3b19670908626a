#include "platform/linux/wayland/WaylandSession.h"

#include <QFile>
#include <QFileInfo>
#include <utility>

namespace orvantile::platform::wayland {
namespace {

using Qt::StringLiterals::operator""_s;

QString programOf(std::int32_t processIdentifier) {
    return QFileInfo(QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(processIdentifier))).fileName();
}

} // namespace

WaylandSession::WaylandSession(Scheduler& scheduler_, const Globals* globals_, KeyboardDevices::Access access)
    : scheduler(scheduler_),
      globals(globals_),
      devices(std::move(access), keymap),
      front(scheduler, programOf),
      bus([this] { takeKeys(); }) {
    front.onChanged = [this] { frontChanged(); };
    front.onContested = [this](const auto& window) {
        if (windows) {
            windows->verify(window);
        }
    };
    front.onPopup = [this](const auto& popup) {
        if (menus && popup.name == attended) {
            menus->popupAppeared(popup);
        }
    };
    devices.onPressed = [this](const auto& candidates) { pressed(candidates); };
    devices.onChanged = [this] { chooseKeys(); };
    bus.onConnected = [this] { connected(); };
    bus.onLost = [this] { lost(); };
}

WaylandSession::~WaylandSession() = default;

void WaylandSession::start() {
    if (globals != nullptr) {
        keymap.follow(*globals);
        toplevels.emplace(*globals, [this] { focusChanged(); });
        devices.start();
    }
    bus.start();
}

void WaylandSession::connected() {
    menus = std::make_unique<a11y::ShownMenus>(bus.connection(), scheduler, [this] { menusChanged(); });
    windows = std::make_unique<a11y::WindowEvents>(
        bus.connection(),
        a11y::WindowEvents::Handlers{
            .activated = [this](const auto& window, const auto& title) { front.activated(window, title); },
            .deactivated = [this](const auto& window) { front.deactivated(window); },
            .destroyed = [this](const auto& window) { front.destroyed(window); },
            .renamed = [this](const auto& window, const auto& title) { front.renamed(window, title); },
            .showing = [this](const auto& object, bool shows) { showing(object, shows); },
            .appeared = [this](const auto& name, auto process) { front.appeared(name, process); },
            .gone = [this](const auto& name) { front.gone(name); }});
    windows->start();
    chooseKeys();
}

/// Keyboards themselves tell of every program, and no program waits for them.
void WaylandSession::chooseKeys() {
    if (devices.hears() || !bus.isConnected()) {
        keys.reset();
    } else if (!keys) {
        keys = std::make_unique<a11y::KeystrokeListener>(bus.address(), [this] {
            QMetaObject::invokeMethod(
                &context, [this] { takeKeys(); }, Qt::QueuedConnection);
        });
    }
}

void WaylandSession::lost() {
    keys.reset();
    windows.reset();
    if (menus) {
        menus->reset();
    }
    menus.reset();
    attended.clear();
    front.clear();
}

void WaylandSession::focusChanged() {
    bus.retry();
    front.focused(toplevels->focused());
}

void WaylandSession::frontChanged() {
    const auto handle = front.window() ? front.window()->handle : 0;
    if (std::exchange(frontHandle, handle) != handle && menus) {
        menus->reset(); // toolkits forget to tell that some have gone
    }
    attended = front.application();
    if (windows) {
        windows->attendTo(attended);
    }
    if (onActiveWindowChanged) {
        onActiveWindowChanged(front.window());
    }
}

void WaylandSession::showing(const a11y::ObjectReference& object, bool shows) {
    if (menus && object.name == attended) {
        menus->showing(object, shows);
    }
}

void WaylandSession::menusChanged() {
    const bool open = menus->isOpen();
    const auto& window = front.window();
    const auto process = open ? (window ? window->processIdentifier : -1) : menuProcess;
    menuProcess = open ? process : -1;
    const auto& handler = open ? onMenuOpened : onMenuClosed;
    if (process > 0 && handler) {
        handler(process);
    }
}

void WaylandSession::takeKeys() {
    devices.drain();
    if (!keys) {
        return;
    }
    for (const auto& stroke : keys->take()) {
        if (const auto candidates = keymap.candidates(stroke.symbol, stroke.code, stroke.modifiers);
            !candidates.empty()) {
            pressed(candidates);
        }
    }
}

void WaylandSession::pressed(const keys::Candidates& candidates) {
    front.settle();
    if (onKeyPressed) {
        onKeyPressed(candidates);
    }
}

std::optional<session::ActiveWindow> WaylandSession::activeWindow() const {
    return front.window();
}

int WaylandSession::openMenus(std::int32_t processIdentifier) const {
    return processIdentifier == menuProcess ? 1 : 0;
}

bool WaylandSession::hearsKeys() const {
    return devices.hears() || (keys && keys->hears());
}

QString WaylandSession::keySources() const {
    if (devices.hears()) {
        return u"Key presses are read from the keyboards themselves, which your user may do on this machine. "_s;
    }
    const auto state =
        hearsKeys() ? u"Key presses come from the programs themselves, over the accessibility bus: from "
                      "those made with GTK 3, and from Qt programs that have loaded the helper. "_s
                    : u"Key presses come from the programs themselves once accessibility is on. "_s;
    return state +
           u"Wayland tells no others: programs made with GTK 4 and Chromium are not heard, except under "
           "XWayland. "_s;
}

void WaylandSession::drain() {
    takeKeys();
    bus.connection().drain();
    takeKeys();
}

} // namespace orvantile::platform::wayland
