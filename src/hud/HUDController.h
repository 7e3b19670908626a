#pragma once

#include "platform/Panel.h"
#include "platform/Platform.h"
#include "settings/Settings.h"

#include <QString>
#include <memory>

namespace orvantile {

/// Puts one short text on the screen in the program's only panel and fades it away after the configured time.
/// Every option is read from the settings at the moment of the call. Main thread only.
class HUDController : public std::enable_shared_from_this<HUDController> {
public:
    /// The one instance, made on first use and never destroyed.
    [[nodiscard]] static const std::shared_ptr<HUDController>& shared();

    /// The program itself only uses `shared`.
    HUDController(platform::Platform& platform, Settings& settings);

    /// Shows `text` with the current settings, in place of what is shown. Cannot fail, except that a desktop
    /// without any screen stops the program.
    void show(const QString& text);

private:
    void createPanel();
    void hide();

    /// Where a panel of `size` goes on the main screen; neither rounded nor clamped.
    [[nodiscard]] platform::Rect panelFrame(const platform::Size& size) const;

    platform::Platform& platform;
    Settings& settings;
    std::shared_ptr<platform::Panel> panel;
    std::unique_ptr<platform::Scheduled> hideTimer;
};

} // namespace orvantile
