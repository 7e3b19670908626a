#include "platform/linux/x11/X11Panels.h"

namespace orvantile::platform::x11 {

X11Panels::X11Panels(XConnection& connection_, Scheduler& scheduler_, const X11Screens& screens_,
                     Compositor& compositor_, ScreenGrab& grab_)
    : connection(connection_),
      scheduler(scheduler_),
      screens(screens_),
      compositor(compositor_),
      grab(grab_) {
    compositor.onChanged = [this] {
        for (const auto& weak : panels) {
            if (const auto panel = weak.lock()) {
                panel->compositorChanged();
            }
        }
    };
}

X11Panels::~X11Panels() {
    compositor.onChanged = nullptr;
}

std::shared_ptr<Panel> X11Panels::create(const PanelAttributes& attributes) {
    auto panel = std::make_shared<X11Panel>(connection, scheduler, screens, compositor, grab);
    panel->setFrame({0, 0, attributes.size.width, attributes.size.height}, false);
    panels.push_back(panel);
    return panel;
}

} // namespace orvantile::platform::x11
