#pragma once

#include "platform/linux/desktop/updates/LinuxUpdater.h"
#include "platform/linux/desktop/updates/UpdateWindow.h"
#include "platform/linux/desktop/updates/UpdateWorker.h"

#include <memory>
#include <variant>

namespace orvantile::platform::desktop {

/// What the user goes through from asking for a check to having an update: one window, one check at a time.
/// Closing the window cancels. Main thread only.
class UpdateSession {
public:
    explicit UpdateSession(UpdaterEnvironment environment_);

    /// Begins a check. While one runs, or its offer waits for an answer, brings its window to the front.
    void check();

private:
    void begin();
    void close();
    void checked(CheckResult result);
    void offer(const AvailableUpdate& update);
    void download(const AvailableUpdate& update);
    void downloaded(const AvailableUpdate& update, const DownloadResult& result);
    void handOver(const AvailableUpdate& update, const QString& path);
    void showUpToDate();
    void showNotConfigured();
    void showSystemTooOld(const SystemTooOld& result);
    void showFailure(const QString& title, UpdateFailure failure, std::function<void()> again);
    [[nodiscard]] UpdateButton closeButton(const QString& title);

    UpdaterEnvironment environment;
    std::unique_ptr<UpdateWindow> window;
    std::unique_ptr<UpdateWorker> worker;
    bool isOffering = false;
};

} // namespace orvantile::platform::desktop
