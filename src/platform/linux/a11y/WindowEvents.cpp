#include "platform/linux/a11y/WindowEvents.h"

#include "platform/linux/a11y/ReplyDecoder.h"

#include <utility>

namespace orvantile::platform::a11y {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr auto properties = "org.freedesktop.DBus.Properties";
const std::string root = "/org/a11y/atspi/accessible/root";

constexpr std::size_t mostToplevels = 64;

/// The object that an event is about; empty when the message has none.
ObjectReference sourceOf(sd_bus_message& message) {
    const char* sender = sd_bus_message_get_sender(&message);
    const char* path = sd_bus_message_get_path(&message);
    return {sender == nullptr ? "" : sender, path == nullptr ? "" : path};
}

/// Reads past the detail and the two numbers that every event has.
std::optional<std::int32_t> firstNumber(sd_bus_message& message) {
    const auto detail = readBytes(message);
    const auto first = detail ? readInteger(message) : std::nullopt;
    return first && readInteger(message) ? first : std::nullopt;
}

} // namespace

WindowEvents::WindowEvents(BusConnection& bus_, Handlers handlers_)
    : bus(bus_),
      handlers(std::move(handlers_)),
      directory(bus),
      registration(bus, EventRegistration::ofWindows) {
    directory.onAppeared = [this](std::int32_t process, const std::string& name) {
        handlers.appeared(name, process);
        look(name);
    };
    directory.onGone = [this](const std::string& name) { handlers.gone(name); };
    directory.onRegistryRestarted = [this] { registration.renew(); };
}

void WindowEvents::start() {
    subscribe("Activate", &WindowEvents::activated);
    subscribe("Deactivate", &WindowEvents::deactivated);
    subscribe("Destroy", &WindowEvents::destroyed);
    directory.start();
}

void WindowEvents::subscribe(const char* member, void (WindowEvents::*handle)(sd_bus_message&)) {
    const std::string rule = "type='signal',interface='org.a11y.atspi.Event.Window',member='";
    subscriptions.push_back(bus.subscribe(
        rule + member + "'", [this, handle](sd_bus_message& message) { (this->*handle)(message); }));
}

void WindowEvents::attendTo(const std::string& name) {
    if (std::exchange(attended, name) == name) {
        return;
    }
    attention.clear();
    if (name.empty()) {
        return;
    }
    const std::string rule =
        "type='signal',sender='" + name + "',interface='org.a11y.atspi.Event.Object',member=";
    attention.push_back(bus.subscribe(rule + "'PropertyChange',arg0='accessible-name'",
                                      [this](sd_bus_message& message) { renamed(message); }));
    attention.push_back(bus.subscribe(rule + "'StateChanged',arg0='showing'",
                                      [this](sd_bus_message& message) { showing(message); }));
}

void WindowEvents::activated(sd_bus_message& message) {
    const auto window = sourceOf(message);
    if (const auto title = firstNumber(message) ? readVariantText(message) : std::nullopt) {
        handlers.activated(window, *title);
    } else {
        askTitle(window);
    }
}

void WindowEvents::deactivated(sd_bus_message& message) {
    handlers.deactivated(sourceOf(message));
}

void WindowEvents::destroyed(sd_bus_message& message) {
    handlers.destroyed(sourceOf(message));
}

void WindowEvents::renamed(sd_bus_message& message) {
    if (const auto name = firstNumber(message) ? readVariantText(message) : std::nullopt) {
        handlers.renamed(sourceOf(message), *name);
    }
}

void WindowEvents::showing(sd_bus_message& message) {
    if (const auto shows = firstNumber(message)) {
        handlers.showing(sourceOf(message), *shows != 0);
    }
}

void WindowEvents::look(const std::string& name) {
    bus.call(bus.method(name, root, accessible, "GetChildren"), self, [this, name](sd_bus_message& answer) {
        if (!isAnswer(answer)) {
            return;
        }
        ReferenceList children(answer);
        for (const auto& child : children.next(mostToplevels)) {
            if (child.name == name) {
                lookAt(child);
            }
        }
    });
}

void WindowEvents::lookAt(const ObjectReference& window) {
    bus.call(bus.method(window.name, window.path, accessible, "GetState"), self,
             [this, window](sd_bus_message& answer) {
                 const auto states = isAnswer(answer) ? readStates(answer) : std::nullopt;
                 if (states && states->has(AccessibleState::active)) {
                     askTitle(window);
                 }
             });
}

void WindowEvents::verify(const ObjectReference& window) {
    bus.call(bus.method(window.name, window.path, accessible, "GetState"), self,
             [this, window](sd_bus_message& answer) {
                 const auto states = isAnswer(answer) ? readStates(answer) : std::nullopt;
                 if (!states || !states->has(AccessibleState::active)) {
                     handlers.deactivated(window);
                 }
             });
}

void WindowEvents::askTitle(const ObjectReference& window) {
    auto question = bus.method(window.name, window.path, properties, "Get");
    if (!question || sd_bus_message_append(question.get(), "ss", accessible, "Name") < 0) {
        return;
    }
    bus.call(std::move(question), self, [this, window](sd_bus_message& answer) {
        if (const auto title = isAnswer(answer) ? readVariantText(answer) : std::nullopt) {
            handlers.activated(window, *title);
        }
    });
}

} // namespace orvantile::platform::a11y
