#pragma once

#include <memory>
#include <systemd/sd-bus.h>

namespace orvantile::platform::desktop {

struct CloseBus {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};

struct ReleaseMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

struct ReleaseSlot {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};

using BusHandle = std::unique_ptr<sd_bus, CloseBus>;
using MessageHandle = std::unique_ptr<sd_bus_message, ReleaseMessage>;

/// An exported object, a match rule or a pending call; releasing it ends it.
using SlotHandle = std::unique_ptr<sd_bus_slot, ReleaseSlot>;

} // namespace orvantile::platform::desktop
