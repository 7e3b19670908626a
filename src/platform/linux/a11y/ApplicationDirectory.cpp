#include "platform/linux/a11y/ApplicationDirectory.h"

#include "platform/linux/a11y/ReplyDecoder.h"

#include <utility>

namespace orvantile::platform::a11y {
namespace {

const std::string registry = "org.a11y.atspi.Registry";
const std::string root = "/org/a11y/atspi/accessible/root";
const std::string daemon = "org.freedesktop.DBus";

constexpr std::size_t mostApplications = 1'000;

/// Asking starts the registry.
constexpr std::chrono::seconds startPatience{25};

} // namespace

ApplicationDirectory::ApplicationDirectory(BusConnection& bus_) : bus(bus_) {}

void ApplicationDirectory::start() {
    subscriptions.push_back(bus.subscribe("type='signal',sender='org.freedesktop.DBus',interface='org."
                                          "freedesktop.DBus',member='NameOwnerChanged'",
                                          [this](sd_bus_message& message) { ownerChanged(message); }));
    subscriptions.push_back(
        bus.subscribe("type='signal',sender='org.a11y.atspi.Registry',path='/org/a11y/atspi/accessible/root',"
                      "interface='org.a11y.atspi.Event.Object',member='ChildrenChanged'",
                      [this](sd_bus_message& message) { childrenChanged(message); }));
    refresh();
}

void ApplicationDirectory::refresh() {
    bus.call(
        bus.method(registry, root, "org.a11y.atspi.Accessible", "GetChildren"), self,
        [this](sd_bus_message& answer) {
            if (isAnswer(answer)) {
                ReferenceList children(answer);
                for (const auto& child : children.next(mostApplications)) {
                    learn(child.name);
                }
            }
        },
        startPatience);
}

void ApplicationDirectory::learn(const std::string& name) {
    if (!name.starts_with(':') || processes.size() >= mostApplications ||
        !processes.emplace(name, std::nullopt).second) {
        return;
    }
    auto question = bus.method(daemon, "/org/freedesktop/DBus", daemon.c_str(), "GetConnectionUnixProcessID");
    if (!question || sd_bus_message_append(question.get(), "s", name.c_str()) < 0) {
        return;
    }
    bus.call(std::move(question), self, [this, name](sd_bus_message& answer) {
        const auto process = isAnswer(answer) ? readNumber(answer) : std::nullopt;
        const auto known = processes.find(name);
        if (known == processes.end()) {
            return;
        }
        if (!process) {
            processes.erase(known);
            return;
        }
        known->second = static_cast<std::int32_t>(*process);
        if (onAppeared) {
            onAppeared(*known->second, name);
        }
    });
}

void ApplicationDirectory::forget(const std::string& name) {
    if (processes.erase(name) > 0 && onGone) {
        onGone(name);
    }
}

void ApplicationDirectory::ownerChanged(sd_bus_message& message) {
    const auto name = readBytes(message);
    const auto former = readBytes(message);
    const auto owner = readBytes(message);
    if (!owner) {
        return;
    }
    if (*name == registry) {
        if (!owner->empty()) {
            refresh();
            if (onRegistryRestarted) {
                onRegistryRestarted();
            }
        }
    } else if (owner->empty()) {
        forget(*name);
    }
}

void ApplicationDirectory::childrenChanged(sd_bus_message& message) {
    const auto detail = readBytes(message);
    if (!detail || !readInteger(message) || !readInteger(message)) {
        return;
    }
    if (const auto child = readVariantReference(message); child && detail->starts_with("add")) {
        learn(child->name);
    }
}

} // namespace orvantile::platform::a11y
