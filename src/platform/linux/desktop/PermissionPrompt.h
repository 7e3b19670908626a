#pragma once

#include "platform/Scheduler.h"

#include <QString>
#include <functional>
#include <memory>

class QMessageBox;

namespace orvantile::platform::desktop {

/// Says what keeps the program from observing applications and offers to switch it on. Main thread only.
class PermissionPrompt {
public:
    /// What the prompt is about; asked when it is about to be shown.
    enum class Obstacle {
        none,
        accessibilityOff, ///< the user can switch it on here
        noKeys,           ///< the display server does not let programs hear keys
    };

    struct Actions {
        std::function<Obstacle()> obstacle;
        std::function<void()> turnOn;
    };

    PermissionPrompt(Scheduler& scheduler, Actions actions);
    PermissionPrompt(const PermissionPrompt&) = delete;
    PermissionPrompt& operator=(const PermissionPrompt&) = delete;
    ~PermissionPrompt();

    /// Shows a dialog in a later turn of the main loop, unless there is no obstacle any more. In the first
    /// moments of the program's life it waits until the bus has had time to answer.
    void ask();

    /// Something has changed: takes the dialog away when there is no obstacle any more.
    void reconsider();

private:
    void show();

    static constexpr double busPatience = 2; ///< seconds after the program's start

    Scheduler& scheduler;
    Actions actions;
    double created;
    std::unique_ptr<Scheduled> pending;
    std::unique_ptr<QMessageBox> dialog;
};

} // namespace orvantile::platform::desktop
