#pragma once

#include "platform/AccessibilityClient.h"
#include "platform/Workspace.h"
#include "platform/linux/a11y/MenuModel.h"
#include "platform/linux/session/DesktopSession.h"

#include <functional>
#include <memory>
#include <vector>

namespace orvantile::platform::session {

class LinuxObserver;

/// Joins what the window system tells with what the menus declare. No accessibility event announces an
/// accelerator on this desktop, so the selection of an item is concluded from the key press and the table of
/// accelerators of the focused window. Main thread only.
class ShortcutSource {
public:
    /// `ownProcess` is never observed.
    ShortcutSource(DesktopSession& session, a11y::MenuModel& menus, std::int32_t ownProcess);
    ShortcutSource(const ShortcutSource&) = delete;
    ShortcutSource& operator=(const ShortcutSource&) = delete;
    ~ShortcutSource();

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const;

    /// The application that was in front last, this one left aside.
    [[nodiscard]] std::optional<std::int32_t> latestApplication() const { return latestOther; }

    void observeActivations(Workspace::ActivationHandler handler);

    [[nodiscard]] std::unique_ptr<AccessibilityObserver>
    createObserver(std::int32_t processIdentifier, AccessibilityObserver::Callback callback);

    /// The process itself tells how many of its menus are open. While it stays in front it is believed from
    /// then on: neither windows nor the table of accelerators count any more.
    void menusTold(std::int32_t processIdentifier, int openMenus);

    /// The process itself tells that a shortcut has fired a command of its menus.
    void commandTold(std::int32_t processIdentifier, int openMenus,
                     std::shared_ptr<const AccessibilityNode> command);

private:
    friend class LinuxObserver;

    void activeWindowChanged(const std::optional<ActiveWindow>& window);
    void keyPressed(const keys::Candidates& candidates);
    void menuChanged(std::int32_t processIdentifier, bool opened);
    bool believe(std::int32_t processIdentifier, int openMenus);
    void postMenu(bool opened);
    void attach(LinuxObserver& observer);
    void detach(LinuxObserver& observer);

    DesktopSession& session;
    a11y::MenuModel& menus;
    std::int32_t ownProcess;
    std::vector<Workspace::ActivationHandler> activationHandlers;
    std::int32_t announcedProcess = -1;
    std::optional<std::int32_t> latestOther;
    LinuxObserver* attached = nullptr; ///< not owned; it detaches itself
    int postedMenus = 0;               ///< that the attached observer takes to be open
    bool believed = false;             ///< the attached process tells for itself
    AttributeValue latestTitle;        ///< of the command that the latest key press named by the table
};

} // namespace orvantile::platform::session
