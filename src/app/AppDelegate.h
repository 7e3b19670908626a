#pragma once

#include "hud/HUDController.h"
#include "monitor/ShortcutMonitor.h"
#include "platform/Platform.h"
#include "settings/Settings.h"

#include <memory>

namespace orvantile {

/// Wires the settings, the monitor and the HUD together. Lives as long as the process. Main thread only.
class AppDelegate : public std::enable_shared_from_this<AppDelegate> {
public:
    explicit AppDelegate(platform::Platform& platform);

    /// Called once, when the application object has finished launching.
    void applicationDidFinishLaunching();

private:
    platform::Platform& platform;
    std::shared_ptr<ShortcutMonitor> monitor;
    std::shared_ptr<HUDController> hud;
};

} // namespace orvantile
