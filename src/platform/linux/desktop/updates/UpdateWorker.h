#pragma once

#include "platform/linux/desktop/updates/UpdateEngine.h"

#include <QThread>
#include <functional>
#include <memory>

namespace orvantile::platform::desktop {

/// An update engine in a thread of its own. The thread begins with this object; destroying it cancels what
/// is under way, without waiting. Main thread only; results arrive there on later turns, and none after the
/// destruction.
class UpdateWorker {
public:
    explicit UpdateWorker(UpdateSetup setup);
    UpdateWorker(const UpdateWorker&) = delete;
    UpdateWorker& operator=(const UpdateWorker&) = delete;
    ~UpdateWorker();

    void check(std::function<void(CheckResult)> done);
    void download(AvailableUpdate update, std::function<void(qint64)> progress,
                  std::function<void(DownloadResult)> done);

private:
    class Inside;

    struct Alive {};

    template <typename Result>
    [[nodiscard]] std::function<void(Result)> onMainThread(std::function<void(Result)> receiver) const;

    std::shared_ptr<Alive> alive = std::make_shared<Alive>();
    QThread* thread; ///< deletes itself when it has ended
    Inside* inside;  ///< lives and dies in the thread
};

} // namespace orvantile::platform::desktop
