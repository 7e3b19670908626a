#pragma once

#include "platform/Panel.h"
#include "platform/Scheduler.h"
#include "platform/Screens.h"

namespace orvantile::platform::macos {

/// Makes panels of the system's own kind.
class MacPanels final : public Panels {
public:
    /// Both outlive the panels.
    MacPanels(Scheduler& scheduler_, const Screens& screens_) : scheduler(scheduler_), screens(screens_) {}

    [[nodiscard]] std::shared_ptr<Panel> create(const PanelAttributes& attributes) override;

private:
    Scheduler& scheduler;
    const Screens& screens;
};

} // namespace orvantile::platform::macos
