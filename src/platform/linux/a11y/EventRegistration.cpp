#include "platform/linux/a11y/EventRegistration.h"

#include <memory>
#include <utility>

namespace orvantile::platform::a11y {
namespace {

const std::string registry = "org.a11y.atspi.Registry";
const std::string object = "/org/a11y/atspi/registry";
constexpr auto interface = "org.a11y.atspi.Registry";

void ignore(sd_bus_message&) {}

} // namespace

const std::vector<const char*> EventRegistration::ofMenus{
    "object:state-changed:sensitive", "object:property-change:accessible-name", "object:children-changed"};

const std::vector<const char*> EventRegistration::ofWindows{"window:activate", "window:deactivate",
                                                            "window:destroy", "object:state-changed:showing",
                                                            "object:property-change:accessible-name"};

EventRegistration::EventRegistration(BusConnection& bus_, const std::vector<const char*>& events_)
    : bus(bus_),
      events(events_) {
    renew();
}

EventRegistration::~EventRegistration() {
    for (const auto* event : events) {
        auto order = bus.method(registry, object, interface, "DeregisterEvent");
        if (order && sd_bus_message_append(order.get(), "s", event) >= 0) {
            bus.call(std::move(order), nullptr, ignore);
        }
    }
}

void EventRegistration::renew() {
    for (const auto* event : events) {
        auto order = bus.method(registry, object, interface, "RegisterEvent");
        if (order && sd_bus_message_append(order.get(), "sass", event, 0, "") >= 0) {
            bus.call(std::move(order), nullptr, ignore);
        }
    }
}

} // namespace orvantile::platform::a11y
