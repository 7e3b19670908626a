#pragma once

#include "platform/linux/desktop/WorkerThread.h"

#include <QString>
#include <functional>
#include <memory>

namespace orvantile::platform::desktop {

/// Opens the accessibility page of the desktop's settings. Nothing here waits: the work is done on a thread
/// of its own, which is left behind when it hangs. Main thread only.
class AccessibilitySettings {
public:
    /// Gets what lets another program's window come to the front: an activation token or start-up identifier,
    /// empty when there is none.
    using TokenReceiver = std::function<void(const QString& token)>;

    /// Calls the receiver, at once or on a later turn.
    using TokenSource = std::function<void(TokenReceiver)>;

    explicit AccessibilitySettings(TokenSource tokens = {});

    /// Silent where there is no such page.
    void open();

private:
    void openWith(const QString& token);

    TokenSource tokens;
    WorkerThread worker;
    std::shared_ptr<AccessibilitySettings*> self; ///< for receivers that are called after this has gone
};

} // namespace orvantile::platform::desktop
