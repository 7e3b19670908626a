#include "platform/Startup.h"
#include "platform/linux/desktop/QtScheduler.h"
#include "platform/null/NullPlatform.h"

namespace orvantile::platform {

std::optional<QString> prepareProcess() {
    return std::nullopt;
}

std::unique_ptr<Platform> makePlatform() {
    auto platform = makeNullPlatform();
    platform->scheduler = std::make_unique<desktop::QtScheduler>();
    return platform;
}

} // namespace orvantile::platform
