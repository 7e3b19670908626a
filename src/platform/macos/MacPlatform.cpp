#include "platform/Startup.h"
#include "platform/macos/accessibility/MacAccessibilityClient.h"
#include "platform/macos/application/ApplicationImages.h"
#include "platform/macos/application/MacActivation.h"
#include "platform/macos/application/MacApplication.h"
#include "platform/macos/application/MacLaunch.h"
#include "platform/macos/desktop/MacAppearance.h"
#include "platform/macos/desktop/MacDefaults.h"
#include "platform/macos/desktop/MacScheduler.h"
#include "platform/macos/desktop/MacScreens.h"
#include "platform/macos/desktop/MacSounds.h"
#include "platform/macos/desktop/MacWorkspace.h"
#include "platform/macos/panel/MacBackdrop.h"
#include "platform/macos/panel/MacPanels.h"
#include "platform/macos/statusitem/MacStatusBar.h"
#include "platform/macos/updates/MacUpdater.h"

namespace orvantile::platform {

std::optional<QString> prepareProcess() {
    // The toolkit would make the program a regular application and bring it to the front.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
    macos::MacApplication::prepare();
    return std::nullopt;
}

std::unique_ptr<Launch> beginLaunch() {
    return std::make_unique<macos::MacLaunch>();
}

std::unique_ptr<Platform> makePlatform() {
    macos::registerApplicationImages();
    auto platform = std::make_unique<Platform>();
    platform->scheduler = std::make_unique<macos::MacScheduler>();
    platform->defaults = std::make_unique<macos::MacDefaults>();
    platform->appearance = std::make_unique<macos::MacAppearance>();
    platform->workspace = std::make_unique<macos::MacWorkspace>();
    platform->accessibility = std::make_unique<macos::MacAccessibilityClient>();
    platform->activation = std::make_unique<macos::MacActivation>();
    platform->screens = std::make_unique<macos::MacScreens>();
    platform->backdrop = std::make_unique<macos::MacBackdrop>();
    platform->panels = std::make_unique<macos::MacPanels>(*platform->scheduler, *platform->screens);
    platform->sounds = std::make_unique<macos::MacSounds>();
    platform->statusBar = std::make_unique<macos::MacStatusBar>();
    platform->updater = std::make_unique<macos::MacUpdater>();
    return platform;
}

} // namespace orvantile::platform
