#pragma once

#include "platform/Panel.h"
#include "platform/Scheduler.h"
#include "platform/linux/x11/Compositor.h"
#include "platform/linux/x11/ScreenGrab.h"
#include "platform/linux/x11/X11Panel.h"

#include <vector>

namespace orvantile::platform::x11 {

class X11Panels final : public Panels {
public:
    X11Panels(XConnection& connection, Scheduler& scheduler, const X11Screens& screens,
              Compositor& compositor, ScreenGrab& grab);
    X11Panels(const X11Panels&) = delete;
    X11Panels& operator=(const X11Panels&) = delete;
    ~X11Panels() override;

    [[nodiscard]] std::shared_ptr<Panel> create(const PanelAttributes& attributes) override;

private:
    XConnection& connection;
    Scheduler& scheduler;
    const X11Screens& screens;
    Compositor& compositor;
    ScreenGrab& grab;
    std::vector<std::weak_ptr<X11Panel>> panels;
};

} // namespace orvantile::platform::x11
