#pragma once

#include "platform/Panel.h"
#include "platform/Scheduler.h"
#include "platform/linux/wayland/WaylandScreens.h"

namespace orvantile::platform::wayland {

class WaylandPanels final : public Panels {
public:
    WaylandPanels(WaylandConnection& connection, Globals& globals, Outputs& outputs, Scheduler& scheduler,
                  const WaylandScreens& screens);

    [[nodiscard]] std::shared_ptr<Panel> create(const PanelAttributes& attributes) override;

private:
    WaylandConnection& connection;
    Globals& globals;
    Outputs& outputs;
    Scheduler& scheduler;
    const WaylandScreens& screens;
};

} // namespace orvantile::platform::wayland
