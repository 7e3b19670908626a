#pragma once

#include "macos/shell/tests/FakeContent.h"
#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/desktop/MacScreens.h"
#include "platform/macos/panel/MacPanels.h"
#include "support/VirtualScheduler.h"

#include <memory>

namespace orvantile::test {

/// A panel and a content for it.
class MacPanelTest : public ShellTest {
protected:
    [[nodiscard]] std::shared_ptr<platform::Panel> makePanel() { return panels.create({.size = {200, 60}}); }

    VirtualScheduler scheduler;
    platform::macos::MacScreens screens;
    platform::macos::MacPanels panels{scheduler, screens};
    std::shared_ptr<FakeContent> content = std::make_shared<FakeContent>();
};

} // namespace orvantile::test
