#pragma once

#include "platform/Scheduler.h"

#include <functional>
#include <utility>

namespace orvantile::platform {

/// This launch of the program, and those after it while it runs. Lives as long as the application object is
/// in use. Main thread only.
class Launch {
public:
    /// `hasVisibleWindows`: whether the program shows a window at that moment.
    using ReopenHandler = std::function<void(bool hasVisibleWindows)>;

    Launch() = default;
    Launch(const Launch&) = delete;
    Launch& operator=(const Launch&) = delete;
    virtual ~Launch() = default;

    /// Called once, when the application object exists and before anything is made on the desktop. True: a
    /// copy that runs already for this user has been told, and this process has nothing left to do. The main
    /// loop turns while this is found out, for a few seconds at most when nobody answers.
    [[nodiscard]] virtual bool isTakenOver() = 0;

    /// Runs `work` once, in a turn of its own, when the desktop says that launching has finished; where it
    /// says nothing, in the next turn.
    virtual void onFinished(Scheduler& scheduler, std::function<void()> work) {
        scheduler.runLater(std::move(work));
    }

    /// Calls `handler` in a turn of its own whenever the user launches the program once more.
    virtual void onReopen(ReopenHandler handler) = 0;
};

} // namespace orvantile::platform
