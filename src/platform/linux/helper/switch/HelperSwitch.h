#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"
#include "platform/linux/helper/switch/HelperFiles.h"

#include <QString>
#include <memory>
#include <utility>

namespace orvantile::platform::helper {

/// Turns the helper for Qt programs on from inside the program. Main thread only; never waits.
class HelperSwitch {
public:
    explicit HelperSwitch(HelperFiles files_) : files(std::move(files_)) {}

    /// For the user's sessions from the next on, and for what this session's services start from now on.
    /// Nothing happens where the installation has no helper.
    void turnOn();

    [[nodiscard]] bool isInstalled() const { return files.isInstalled(); }

    [[nodiscard]] bool isOn() const { return files.isOn(); }

    /// In what state the helper is, in a sentence or two for the user; empty where the installation has none.
    [[nodiscard]] QString description() const;

private:
    HelperFiles files;
    std::unique_ptr<desktop::SessionBus> bus; ///< kept until it has delivered
};

} // namespace orvantile::platform::helper
