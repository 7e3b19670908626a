#pragma once

#include "desktop/applications/Stage.h"
#include "desktop/compatibility/Program.h"
#include "desktop/compatibility/Truth.h"

#include <set>

namespace orvantile::test {

/// A desktop with the program under test and one application, which can be brought back to its main window
/// after whatever a shortcut did.
class Desk {
public:
    explicit Desk(const Program& program);

    [[nodiscard]] Stage& stage() { return scene; }

    [[nodiscard]] Truth& truth() { return menus; }

    [[nodiscard]] bool knowsTriggered() const { return menus.knowsTriggered(); }

    [[nodiscard]] const Window& mainWindow() const { return main; }

    [[nodiscard]] int restarts() const { return timesRestarted; }

    void startOrvantile();

    /// Starts the application, and ends the one that runs.
    void start();

    /// Waits until nothing changes any more, and brings the main window back to the front, alone. Starts the
    /// application again when that is the only way; returns whether it was.
    bool restore();

    /// Waits until nothing on the screen has changed for a while.
    void settle() const;

    /// Waits until the program under test has nothing to do any more, such as reading menus.
    void awaitIdle();

    /// Whether the main window is in front, alone and without menus.
    [[nodiscard]] bool isAtRest() const;

private:
    using Picture = std::vector<xcb_window_t>;

    [[nodiscard]] Picture look() const;
    [[nodiscard]] bool chooseMain(const WindowWatcher::Predicate& fits);
    [[nodiscard]] bool hasPopup() const;
    [[nodiscard]] bool tryToRestore();
    void openEachMenu();

    const Program& program;
    mutable Stage scene; ///< looking takes no constant one
    Truth menus;
    std::unique_ptr<ChildProcess> application;
    Window main;
    int timesRestarted = -1;
};

} // namespace orvantile::test
