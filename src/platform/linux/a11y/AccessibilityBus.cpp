#include "platform/linux/a11y/AccessibilityBus.h"

#include "platform/linux/a11y/ReplyDecoder.h"
#include "platform/linux/a11y/SessionAddress.h"

#include <utility>

namespace orvantile::platform::a11y {
namespace {

const std::string service = "org.a11y.Bus";
const std::string object = "/org/a11y/bus";
constexpr auto statusInterface = "org.a11y.Status";
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr auto busInterface = "org.freedesktop.DBus";

/// The first call starts the service.
constexpr std::chrono::seconds startPatience{25};
constexpr std::chrono::seconds retryInterval{1};

} // namespace

AccessibilityBus::AccessibilityBus(BusConnection::Hook drainFirst)
    : session(drainFirst),
      bus(std::move(drainFirst)) {
    session.onClosed = [this] {
        subscriptions.clear();
        finding = false;
        enabled = false;
    };
    bus.onClosed = [this] {
        lose();
        retry();
    };
}

void AccessibilityBus::start() {
    latestTry = std::chrono::steady_clock::now();
    openSession();
    findBus();
}

void AccessibilityBus::retry() {
    if ((session.isOpen() && bus.isOpen()) || finding ||
        std::chrono::steady_clock::now() - latestTry < retryInterval) {
        return;
    }
    start();
}

void AccessibilityBus::openSession() {
    if (session.isOpen() || !session.open(sessionAddress())) {
        return;
    }
    subscriptions.push_back(
        session.subscribe("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                          "member='NameOwnerChanged',arg0='org.a11y.Bus'",
                          [this](sd_bus_message& message) {
                              const auto name = readBytes(message);
                              const auto former = readBytes(message);
                              const auto owner = readBytes(message);
                              if (!owner || owner->empty()) {
                                  enabled = false;
                                  return;
                              }
                              readSwitch();
                              findBus(); // which may be another one now
                          }));
    subscriptions.push_back(
        session.subscribe("type='signal',sender='org.a11y.Bus',path='/org/a11y/bus',"
                          "interface='org.freedesktop.DBus.Properties',member='PropertiesChanged',"
                          "arg0='org.a11y.Status'",
                          [this](sd_bus_message&) { readSwitch(); }));
    readSwitch();
}

void AccessibilityBus::readSwitch() {
    auto question = session.method(service, object, propertiesInterface, "Get");
    if (question && sd_bus_message_append(question.get(), "ss", statusInterface, "IsEnabled") >= 0) {
        session.call(
            std::move(question), self,
            [this](sd_bus_message& answer) {
                enabled = readVariantBoolean(answer).value_or(false);
                if (onSwitchRead) {
                    onSwitchRead();
                }
            },
            startPatience);
    }
}

void AccessibilityBus::setEnabled(bool value) {
    openSession();
    auto order = session.method(service, object, propertiesInterface, "Set");
    if (order &&
        sd_bus_message_append(order.get(), "ssv", statusInterface, "IsEnabled", "b", int{value}) >= 0) {
        session.call(
            std::move(order), self, [this](sd_bus_message&) { readSwitch(); }, startPatience);
    }
    retry();
}

void AccessibilityBus::findBus() {
    if (finding) {
        return;
    }
    auto question = session.method(service, object, "org.a11y.Bus", "GetAddress");
    if (!question) {
        connectTo({});
        return;
    }
    finding = true;
    session.call(
        std::move(question), self,
        [this](sd_bus_message& answer) {
            finding = false;
            connectTo(isAnswer(answer) ? readBytes(answer).value_or(std::string()) : std::string());
        },
        startPatience);
}

void AccessibilityBus::connectTo(const std::string& address) {
    const auto former = std::exchange(busAddress, address);
    if (busAddress.empty() && fallbackAddress) {
        busAddress = fallbackAddress().value_or(std::string());
    }
    if (bus.isOpen() && (busAddress.empty() || busAddress == former)) {
        busAddress = former;
        return;
    }
    // The one that served a session bus which has ended may run on, with nobody on it.
    bus.close();
    lose();
    if (bus.open(busAddress)) {
        greet();
    }
}

void AccessibilityBus::greet() {
    // The connection can be used once the bus has answered anything.
    bus.call(
        bus.method(busInterface, "/org/freedesktop/DBus", busInterface, "GetId"), self,
        [this](sd_bus_message& answer) {
            if (isAnswer(answer) && !std::exchange(connected, true) && onConnected) {
                onConnected();
            }
        },
        startPatience);
}

void AccessibilityBus::lose() {
    if (std::exchange(connected, false) && onLost) {
        onLost();
    }
}

} // namespace orvantile::platform::a11y
