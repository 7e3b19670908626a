#pragma once

#include "platform/Launch.h"
#include "platform/linux/desktop/launch/LaunchToken.h"
#include "platform/linux/desktop/launch/SingleInstance.h"
#include "platform/linux/desktop/launch/TerminationSignals.h"

#include <QObject>
#include <optional>

namespace orvantile::platform::desktop {

/// Launches as the session bus tells them, and the signals that end the program: one copy per session bus. A
/// launch on another display of the same session shows the preferences where the copy runs.
class LinuxLaunch final : public platform::Launch {
public:
    LinuxLaunch();

    [[nodiscard]] bool isTakenOver() override;
    void onReopen(ReopenHandler handler) override;

private:
    void launchedAgain(const LaunchToken& token);

    LaunchToken token;
    std::optional<SingleInstance> instance;
    std::optional<TerminationSignals> signals;
    ReopenHandler reopen;
    QObject context;
};

} // namespace orvantile::platform::desktop
