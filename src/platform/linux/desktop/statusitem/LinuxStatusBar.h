#pragma once

#include "platform/Appearance.h"
#include "platform/Scheduler.h"
#include "platform/StatusBar.h"

namespace orvantile::platform::desktop {

/// The bars of the desktop, whichever of them there are.
class LinuxStatusBar final : public StatusBar {
public:
    /// Both outlive the status bar and its items.
    LinuxStatusBar(Scheduler& scheduler_, Appearance& appearance_)
        : scheduler(scheduler_),
          appearance(appearance_) {}

    [[nodiscard]] std::unique_ptr<StatusItem> createItem() override;
    [[nodiscard]] std::optional<SymbolImage> symbolImage(const QString& name,
                                                         const QString& accessibilityDescription) override;

private:
    Scheduler& scheduler;
    Appearance& appearance;
    int itemsMade = 0;
};

} // namespace orvantile::platform::desktop
