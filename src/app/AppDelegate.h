#pragma once

#include "app/PresentableWindow.h"
#include "hud/HUDController.h"
#include "monitor/ShortcutMonitor.h"
#include "platform/Platform.h"
#include "settings/Settings.h"

#include <memory>
#include <vector>

namespace orvantile {

/// Wires the settings, the monitor and the HUD together, and owns the status item and the preferences window.
/// One per process, alive as long as the process. Main thread only; nothing here fails.
class AppDelegate : public std::enable_shared_from_this<AppDelegate> {
public:
    /// Reads no setting and makes nothing on the desktop. `makePreferences` is called at most once.
    AppDelegate(platform::Platform& platform, WindowFactory makePreferences);

    /// Called once, when the application object has finished launching.
    void applicationDidFinishLaunching();

    /// The user has launched the program once more while it runs. True: it has been dealt with.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);

    /// The status menu is about to open.
    void menuWillOpen(platform::Menu& menu);

    // The actions of the status menu.
    void toggleEnabled();
    void openPreferences();
    void checkForUpdates();

private:
    void applyMenuBarVisibility(bool visible);
    void refreshStatusIcon();
    [[nodiscard]] std::shared_ptr<platform::Menu> buildMenu();
    void installActionCallback();

    /// The same handler, run in a later turn of the main loop if the delegate still exists.
    template <typename Value>
    [[nodiscard]] std::function<void(const Value&)> onMainLoop(void (AppDelegate::*handler)(Value));

    void enabledChanged(bool);

    platform::Platform& platform;
    WindowFactory makePreferences;
    std::unique_ptr<platform::StatusItem> statusItem;
    std::shared_ptr<platform::Menu> statusMenu; ///< of `statusItem`
    std::shared_ptr<ShortcutMonitor> monitor;
    std::shared_ptr<HUDController> hud;
    std::unique_ptr<PresentableWindow> prefsWindow;
    std::vector<Subscription> cancellables;
};

} // namespace orvantile
