#pragma once

#include "platform/linux/a11y/MenuModel.h"
#include "platform/linux/desktop/WorkerThread.h"
#include "platform/linux/menus/ActionGroups.h"
#include "platform/linux/menus/SessionMenuBus.h"
#include "platform/linux/menus/ShortcutsDescription.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvantile::platform::menus {

/// The shortcuts that GTK programs without a menu bar list in their shortcuts window: read from the program's
/// own files, because the window exists only while it is open. The last resort, for the program's main
/// windows only: it says what a shortcut is meant to do, and where it names an action the program tells
/// whether that can be done now. Main thread only.
class ShortcutsWindowModel final : public a11y::MenuModel {
public:
    /// Reads the shortcuts of a process; called in a thread of its own.
    using Read = std::function<std::vector<DescribedShortcut>(std::int32_t processIdentifier)>;

    /// `bus` must outlive it.
    ShortcutsWindowModel(SessionMenuBus& bus, Read read);
    ShortcutsWindowModel(const ShortcutsWindowModel&) = delete;
    ShortcutsWindowModel& operator=(const ShortcutsWindowModel&) = delete;
    ~ShortcutsWindowModel() override;

    /// Called when the shortcuts of the followed process are known.
    std::function<void()> onRead;

    void follow(std::int32_t processIdentifier) override;
    void windowActivated(const session::ActiveWindow& window) override;

    void menuClosed() override {}

    [[nodiscard]] a11y::MenuAnswer commandFor(const session::ActiveWindow& window,
                                              const keys::Candidates& candidates) override;
    [[nodiscard]] a11y::MenuReach reach(std::int32_t processIdentifier) const override;

private:
    using Shortcuts = std::vector<DescribedShortcut>;
    struct Answers;

    void learn(std::int32_t processIdentifier);
    void learned(std::int32_t processIdentifier, Shortcuts shortcuts);
    void unwatch();
    void watchActions(const session::WindowObjects& objects);
    [[nodiscard]] bool isEnabled(const DescribedShortcut& shortcut) const;

    SessionMenuBus& bus;
    Read read;
    std::int32_t followed = -1;
    std::map<std::int32_t, Shortcuts> known; ///< by process
    session::WindowObjects watched;
    ActionGroups actions; ///< of `watched`
    std::optional<session::ActiveWindow> latestWindow;
    bool reading = false;
    QObject context; ///< of the answers
    std::shared_ptr<Answers> answers;
    desktop::WorkerThread worker;
};

} // namespace orvantile::platform::menus
