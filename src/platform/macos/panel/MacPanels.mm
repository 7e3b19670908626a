#include "platform/macos/panel/MacPanels.h"

#include "platform/macos/panel/MacPanel.h"

namespace orvantile::platform::macos {

std::shared_ptr<Panel> MacPanels::create(const PanelAttributes& attributes) {
    return std::make_shared<MacPanel>(attributes, scheduler, screens);
}

} // namespace orvantile::platform::macos
