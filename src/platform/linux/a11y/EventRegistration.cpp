#include "platform/linux/a11y/EventRegistration.h"

#include <array>
#include <memory>
#include <utility>

namespace orvantile::platform::a11y {
namespace {

const std::string registry = "org.a11y.atspi.Registry";
const std::string object = "/org/a11y/atspi/registry";
constexpr auto interface = "org.a11y.atspi.Registry";

constexpr std::array events{"object:state-changed:sensitive", "object:property-change:accessible-name",
                            "object:children-changed"};

void ignore(sd_bus_message&) {}

} // namespace

EventRegistration::EventRegistration(BusConnection& bus_) : bus(bus_) {
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
