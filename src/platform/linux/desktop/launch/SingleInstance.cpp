#include "platform/linux/desktop/launch/SingleInstance.h"

#include <QEventLoop>
#include <QTimer>
#include <cstdint>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

constexpr auto daemonName = "org.freedesktop.DBus";
constexpr auto daemonPath = "/org/freedesktop/DBus";

// Numbers of the bus protocol.
constexpr std::uint32_t doNotQueue = 4;
constexpr std::uint32_t existsAlready = 3;

/// How often a copy is found and has ended before it could be told.
constexpr int mostAttempts = 3;

bool isError(sd_bus_message& message) {
    return sd_bus_message_is_method_error(&message, nullptr) > 0;
}

} // namespace

SingleInstance::SingleInstance(std::unique_ptr<SessionBus> bus_, std::string name_,
                               ApplicationObject::Handler launched)
    : name(std::move(name_)),
      bus(std::move(bus_)) {
    if (bus) {
        object = std::make_unique<ApplicationObject>(*bus, name, std::move(launched));
    }
}

bool SingleInstance::handOver(const LaunchToken& token) {
    if (!bus) {
        return false;
    }
    bus->attach();
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        if (claimName() != Outcome::refused) {
            return false;
        }
        if (activateOwner(token) != Outcome::refused) {
            return true;
        }
    }
    return false;
}

SingleInstance::Outcome SingleInstance::claimName() {
    auto call = bus->method(daemonName, daemonPath, daemonName, "RequestName");
    sd_bus_message_append(call.get(), "su", name.c_str(), doNotQueue);
    return await(std::move(call), [](sd_bus_message& reply) {
        std::uint32_t result = 0;
        const bool answered = !isError(reply) && sd_bus_message_read(&reply, "u", &result) > 0;
        return answered && result == existsAlready ? Outcome::refused : Outcome::done;
    });
}

SingleInstance::Outcome SingleInstance::activateOwner(const LaunchToken& token) {
    auto call =
        bus->method(name, ApplicationObject::pathOf(name).c_str(), ApplicationObject::interface, "Activate");
    // A copy that has just ended must not be started again by the bus: this process takes its place.
    sd_bus_message_set_auto_start(call.get(), 0);
    token.append(call.get());
    return await(std::move(call),
                 [](sd_bus_message& reply) { return isError(reply) ? Outcome::refused : Outcome::done; });
}

SingleInstance::Outcome SingleInstance::await(MessageHandle call, const Judgement& judge) {
    QEventLoop loop;
    auto outcome = Outcome::unanswered;
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    bus->onClosed = [&loop] { loop.quit(); };
    const auto pending = bus->call(std::move(call), [&](sd_bus_message& reply) {
        outcome = judge(reply);
        loop.quit();
    });
    if (pending) {
        loop.exec();
    }
    bus->onClosed = nullptr;
    return outcome;
}

} // namespace orvantile::platform::desktop
