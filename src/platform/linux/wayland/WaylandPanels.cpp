#include "platform/linux/wayland/WaylandPanels.h"

#include "platform/linux/wayland/WaylandPanel.h"

namespace orvantile::platform::wayland {

WaylandPanels::WaylandPanels(WaylandConnection& connection_, Globals& globals_, Outputs& outputs_,
                             Scheduler& scheduler_, const WaylandScreens& screens_)
    : connection(connection_),
      globals(globals_),
      outputs(outputs_),
      scheduler(scheduler_),
      screens(screens_) {}

std::shared_ptr<Panel> WaylandPanels::create(const PanelAttributes& attributes) {
    auto panel = std::make_shared<WaylandPanel>(connection, globals, outputs, scheduler, screens);
    panel->setFrame({0, 0, attributes.size.width, attributes.size.height}, false);
    return panel;
}

} // namespace orvantile::platform::wayland
