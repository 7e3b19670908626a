#pragma once

#include "platform/Scheduler.h"
#include "platform/linux/a11y/AccessibilityBus.h"
#include "platform/linux/a11y/KeystrokeListener.h"
#include "platform/linux/a11y/ShownMenus.h"
#include "platform/linux/a11y/WindowEvents.h"
#include "platform/linux/session/DesktopSession.h"
#include "platform/linux/wayland/FrontWindow.h"
#include "platform/linux/wayland/KeyboardDevices.h"
#include "platform/linux/wayland/SeatKeymap.h"
#include "platform/linux/wayland/Toplevels.h"

#include <QObject>
#include <memory>
#include <optional>

namespace orvantile::platform::wayland {

/// What can be known of windows, menus and keys where the window system tells nobody: applications tell it
/// themselves on the accessibility bus, and the compositor says which window has the focus where it lists
/// them. Connections of its own, so that no reading of menus is in the way.
class WaylandSession : public session::DesktopSession {
public:
    /// `globals` may be null; both must outlive the session.
    WaylandSession(Scheduler& scheduler, const Globals* globals,
                   KeyboardDevices::Access access = KeyboardDevices::ofSystem());
    WaylandSession(const WaylandSession&) = delete;
    WaylandSession& operator=(const WaylandSession&) = delete;
    ~WaylandSession() override;

    void start() override;
    [[nodiscard]] std::optional<session::ActiveWindow> activeWindow() const override;
    [[nodiscard]] int openMenus(std::int32_t processIdentifier) const override;
    [[nodiscard]] bool hearsKeys() const override;
    [[nodiscard]] QString keySources() const override;
    void drain() override;

private:
    void connected();
    void lost();
    void focusChanged();
    void frontChanged();
    void menusChanged();
    void showing(const a11y::ObjectReference& object, bool shows);
    void chooseKeys();
    void takeKeys();
    void pressed(const keys::Candidates& candidates);

    Scheduler& scheduler;
    const Globals* globals;
    SeatKeymap keymap;
    KeyboardDevices devices;
    FrontWindow front;
    a11y::AccessibilityBus bus;
    std::unique_ptr<a11y::WindowEvents> windows;
    std::unique_ptr<a11y::ShownMenus> menus;
    std::optional<Toplevels> toplevels;
    std::string attended; ///< the application whose menus are watched
    std::uint64_t frontHandle = 0;
    std::int32_t menuProcess = -1;                 ///< whose menus were told to be open; −1 for none
    QObject context;                               ///< receives what the listener's thread has heard
    std::unique_ptr<a11y::KeystrokeListener> keys; ///< goes first, with its thread
};

} // namespace orvantile::platform::wayland
