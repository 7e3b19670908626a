#pragma once

#include "platform/linux/a11y/BusConnection.h"

#include <vector>

namespace orvantile::platform::a11y {

/// Asks applications, through the registry, to send a few kinds of events; takes that back when destroyed.
/// Every application sends them then, so this exists only while they are needed.
class EventRegistration {
public:
    /// What keeps tables of menus fresh.
    static const std::vector<const char*> ofMenus;

    /// Which window has the focus, and what shows in it.
    static const std::vector<const char*> ofWindows;

    /// `events` must outlive it.
    EventRegistration(BusConnection& bus, const std::vector<const char*>& events);
    EventRegistration(const EventRegistration&) = delete;
    EventRegistration& operator=(const EventRegistration&) = delete;
    ~EventRegistration();

    /// Asks again, for a registry that has been restarted.
    void renew();

private:
    BusConnection& bus;
    const std::vector<const char*>& events;
};

} // namespace orvantile::platform::a11y
