#include "platform/Platform.h"

#include <QtGlobal>
#include <utility>

namespace orvantile::platform {
namespace {

std::unique_ptr<Platform>& installed() {
    // Never destroyed: the shared instances that use it live until the process ends.
    static auto& holder = *std::make_unique<std::unique_ptr<Platform>>().release();
    return holder;
}

} // namespace

Platform& Platform::current() {
    if (!installed()) {
        qFatal("no platform has been installed");
    }
    return *installed();
}

std::unique_ptr<Platform> Platform::install(std::unique_ptr<Platform> platform) {
    return std::exchange(installed(), std::move(platform));
}

} // namespace orvantile::platform
