#pragma once

#include "platform/Platform.h"

#include <memory>

namespace orvantile {

/// The update framework's controller, started when it is first needed. Main thread only.
class SparkleUpdater {
public:
    /// The one instance, made on first use and never destroyed.
    [[nodiscard]] static SparkleUpdater& shared();

    /// Starts the updater. The program itself only uses `shared`.
    explicit SparkleUpdater(platform::Updater& updater);

    void checkForUpdates();

private:
    std::unique_ptr<platform::UpdaterController> controller;
};

} // namespace orvantile
