#include "app/SparkleUpdater.h"

namespace orvantile {

SparkleUpdater& SparkleUpdater::shared() {
    static auto& instance =
        *std::make_unique<SparkleUpdater>(*platform::Platform::current().updater).release();
    return instance;
}

SparkleUpdater::SparkleUpdater(platform::Updater& updater) : controller(updater.createController(true)) {}

void SparkleUpdater::checkForUpdates() {
    controller->checkForUpdates();
}

} // namespace orvantile
