#pragma once

#include "support/desktop/HudListener.h"
#include "support/wayland/PrivateWaylandSession.h"
#include "support/wayland/VirtualKeyboard.h"

#include <map>
#include <memory>

namespace orvantile::test {

/// How a program is started on Wayland and recognised.
struct WaylandApplication {
    QString program;
    QStringList arguments;
    QString title; ///< a part of its window's

    /// A shortcut that is always enabled, changes nothing, and what it is called.
    QString fenceKeys;
    QString fenceLabel;
};

/// A private Wayland desktop with real applications and the program itself, driven by keys and judged by what
/// it tells to show.
class WaylandStage {
public:
    explicit WaylandStage(const WaylandSessionOptions& options = {});

    [[nodiscard]] PrivateWaylandSession& session() { return desktop; }

    [[nodiscard]] VirtualKeyboard& keys() { return *keyboard; }

    [[nodiscard]] HudListener& huds() { return listener; }

    /// Starts an application and waits until its window has the focus.
    ChildProcess& start(const WaylandApplication& application);

    /// Gives the focus to a window by the identifier of its application, and waits for it.
    void focus(const QString& criterion, const QString& title);

    /// Starts the program itself; its preferences are closed again, and the focus is where it was.
    void startOrvantile();

    [[nodiscard]] ChildProcess& orvantile() { return *product; }

    /// Presses the application's fence until it is named: its commands are known from then on. Returns what
    /// else was shown meanwhile.
    QStringList awaitCommandsOf(const WaylandApplication& application);

    /// Presses a combination and returns the label that is shown for it, or "nothing". Returns when the HUD
    /// has gone again.
    QString fire(const QString& combination);

    void awaitFocus(const QString& title);

private:
    PrivateWaylandSession desktop;
    std::unique_ptr<VirtualKeyboard> keyboard;
    HudListener listener;
    std::unique_ptr<ChildProcess> product;
    std::map<QString, std::unique_ptr<ChildProcess>> applications;
};

} // namespace orvantile::test
