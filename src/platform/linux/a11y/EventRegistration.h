#pragma once

#include "platform/linux/a11y/BusConnection.h"

namespace orvantile::platform::a11y {

/// Asks applications, through the registry, to send the few events that keep menu tables fresh; takes that
/// back when destroyed. Every application sends them then, so this exists only while one is followed.
class EventRegistration {
public:
    explicit EventRegistration(BusConnection& bus);
    EventRegistration(const EventRegistration&) = delete;
    EventRegistration& operator=(const EventRegistration&) = delete;
    ~EventRegistration();

    /// Asks again, for a registry that has been restarted.
    void renew();

private:
    BusConnection& bus;
};

} // namespace orvantile::platform::a11y
