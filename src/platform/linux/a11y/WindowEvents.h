#pragma once

#include "platform/linux/a11y/ApplicationDirectory.h"
#include "platform/linux/a11y/BusConnection.h"
#include "platform/linux/a11y/EventRegistration.h"
#include "platform/linux/a11y/ObjectReference.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace orvantile::platform::a11y {

/// What applications say of their windows and of what shows in them. Lives as long as the connection is up.
/// Main thread only.
class WindowEvents {
public:
    /// All of them are set before `start`.
    struct Handlers {
        std::function<void(const ObjectReference& window, const QString& title)> activated;
        std::function<void(const ObjectReference& window)> deactivated;
        std::function<void(const ObjectReference& window)> destroyed;
        std::function<void(const ObjectReference& object, const QString& name)> renamed;
        std::function<void(const ObjectReference& object, bool shows)> showing;

        /// The process of an application is known from now on, perhaps after its first events.
        std::function<void(const std::string& name, std::int32_t processIdentifier)> appeared;
        std::function<void(const std::string& name)> gone;
    };

    WindowEvents(BusConnection& bus, Handlers handlers);

    /// Subscribes, and asks which windows have the focus now.
    void start();

    /// Hears of names and of what shows in this application alone; empty for none.
    void attendTo(const std::string& name);

    /// Asks a window whether it has the focus; one that has not, or does not answer, was deactivated.
    void verify(const ObjectReference& window);

private:
    void subscribe(const char* member, void (WindowEvents::*handle)(sd_bus_message&));
    void activated(sd_bus_message& message);
    void deactivated(sd_bus_message& message);
    void destroyed(sd_bus_message& message);
    void renamed(sd_bus_message& message);
    void showing(sd_bus_message& message);

    /// Windows that had the focus before anybody asked for events have not told.
    void look(const std::string& name);
    void lookAt(const ObjectReference& window);

    /// Takes the window for active once its title is known.
    void askTitle(const ObjectReference& window);

    BusConnection& bus;
    Handlers handlers;
    ApplicationDirectory directory;
    EventRegistration registration;
    std::vector<SlotHandle> subscriptions;
    std::vector<SlotHandle> attention; ///< subscriptions to one application
    std::string attended;
    std::shared_ptr<const int> self = std::make_shared<int>();
};

} // namespace orvantile::platform::a11y
