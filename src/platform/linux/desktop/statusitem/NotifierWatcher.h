#pragma once

#include "platform/linux/desktop/bus/SessionBus.h"

#include <QTimer>
#include <functional>
#include <string>

namespace orvantile::platform::desktop {

/// Keeps an item registered with whoever collects items for the bars of the desktop
/// (org.kde.StatusNotifierWatcher), however often that one comes, goes or restarts.
class NotifierWatcher {
public:
    enum class State {
        unknown, ///< the bus has not answered yet
        hidden,  ///< there is no watcher, or no bar behind it
        shown,   ///< a bar has the item
    };

    /// `service` is the item's name on `bus`, which outlives this object.
    NotifierWatcher(SessionBus& bus, std::string service);
    NotifierWatcher(const NotifierWatcher&) = delete;
    NotifierWatcher& operator=(const NotifierWatcher&) = delete;
    ~NotifierWatcher() = default;

    [[nodiscard]] State state() const;

    /// Called after `state` may have changed; may not destroy this object.
    std::function<void()> onChange;

private:
    void askForOwner();
    void setOwner(const std::string& owner);
    void registerItem();
    void askForHost();
    void changed();

    SessionBus& bus;
    std::string service;
    std::string owner; ///< the watcher's unique name; empty while there is none
    bool known = false;
    bool registered = false;
    bool hasHost = false;
    int attempts = 0;
    QTimer retry;
    SlotHandle ownerChanges;
    SlotHandle hostChanges;
    SlotHandle pendingOwner;
    SlotHandle pendingRegistration;
    SlotHandle pendingHost;
};

} // namespace orvantile::platform::desktop
