#include "platform/linux/desktop/statusitem/NotifierWatcher.h"

#include <chrono>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr auto daemonName = "org.freedesktop.DBus";

/// A watcher may own its name before it answers calls.
constexpr std::chrono::milliseconds retryDelay{200};
constexpr int retries = 10;

bool isError(sd_bus_message& message) {
    return sd_bus_message_is_method_error(&message, nullptr) > 0;
}

} // namespace

NotifierWatcher::NotifierWatcher(SessionBus& bus_, std::string service_)
    : bus(bus_),
      service(std::move(service_)) {
    retry.setSingleShot(true);
    retry.setInterval(retryDelay);
    QObject::connect(&retry, &QTimer::timeout, &retry, [this] { registerItem(); });

    ownerChanges = bus.subscribe(std::string("type='signal',sender='org.freedesktop.DBus',interface='org."
                                             "freedesktop.DBus',member='NameOwnerChanged',arg0='") +
                                     watcherName + "'",
                                 [this](sd_bus_message& signal) {
                                     const char* name = nullptr;
                                     const char* former = nullptr;
                                     const char* current = nullptr;
                                     if (sd_bus_message_read(&signal, "sss", &name, &former, &current) > 0) {
                                         setOwner(current);
                                     }
                                 });
    askForOwner();
}

NotifierWatcher::State NotifierWatcher::state() const {
    if (!known) {
        return State::unknown;
    }
    return registered && hasHost ? State::shown : State::hidden;
}

void NotifierWatcher::askForOwner() {
    auto call = bus.method(daemonName, "/org/freedesktop/DBus", daemonName, "GetNameOwner");
    sd_bus_message_append(call.get(), "s", watcherName);
    pendingOwner = bus.call(std::move(call), [this](sd_bus_message& reply) {
        const char* current = nullptr;
        const bool answered = !isError(reply) && sd_bus_message_read(&reply, "s", &current) > 0;
        setOwner(answered ? current : "");
    });
}

void NotifierWatcher::setOwner(const std::string& owner_) {
    if (owner == owner_ && known) {
        return;
    }
    owner = owner_;
    registered = false;
    hasHost = false;
    attempts = 0;
    retry.stop();
    pendingOwner.reset();
    pendingRegistration.reset();
    pendingHost.reset();
    hostChanges.reset();
    if (owner.empty()) {
        changed();
        return;
    }
    hostChanges = bus.subscribe(
        "type='signal',sender='" + owner + "',interface='" + watcherName + "'",
        [this](sd_bus_message& signal) {
            if (sd_bus_message_is_signal(&signal, nullptr, "StatusNotifierHostRegistered") > 0 ||
                sd_bus_message_is_signal(&signal, nullptr, "StatusNotifierHostUnregistered") > 0) {
                askForHost();
            }
        });
    registerItem();
}

void NotifierWatcher::registerItem() {
    auto call = bus.method(owner, watcherPath, watcherName, "RegisterStatusNotifierItem");
    sd_bus_message_append(call.get(), "s", service.c_str());
    pendingRegistration = bus.call(std::move(call), [this](sd_bus_message& reply) {
        registered = !isError(reply);
        if (registered) {
            askForHost();
            return;
        }
        if (attempts++ < retries) {
            retry.start();
        }
        changed();
    });
}

void NotifierWatcher::askForHost() {
    auto call = bus.method(owner, watcherPath, "org.freedesktop.DBus.Properties", "Get");
    sd_bus_message_append(call.get(), "ss", watcherName, "IsStatusNotifierHostRegistered");
    pendingHost = bus.call(std::move(call), [this](sd_bus_message& reply) {
        int isRegistered = 0;
        hasHost =
            !isError(reply) && sd_bus_message_read(&reply, "v", "b", &isRegistered) > 0 && isRegistered != 0;
        changed();
    });
}

void NotifierWatcher::changed() {
    known = true;
    if (onChange) {
        onChange();
    }
}

} // namespace orvantile::platform::desktop
