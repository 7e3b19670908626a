#include "platform/linux/a11y/ShownMenus.h"

#include "platform/linux/a11y/ReplyDecoder.h"

#include <utility>

namespace orvantile::platform::a11y {
namespace {

constexpr auto accessible = "org.a11y.atspi.Accessible";

/// One item of a menu is enough to know it by.
constexpr std::size_t mostQuestions = 8;
constexpr std::size_t mostObjects = 4'000;

bool isMenuItem(std::uint32_t role) {
    const AccessibleRole known{role};
    return known == AccessibleRole::menuItem || known == AccessibleRole::checkMenuItem ||
           known == AccessibleRole::radioMenuItem;
}

double secondsOf(std::chrono::seconds time) {
    return static_cast<double>(time.count());
}

} // namespace

ShownMenus::ShownMenus(BusConnection& bus_, Scheduler& scheduler_, std::function<void()> onChanged_)
    : bus(bus_),
      scheduler(scheduler_),
      onChanged(std::move(onChanged_)) {}

void ShownMenus::reset() {
    watching.reset();
    learning.clear();
    popups.clear();
    if (!shown.empty()) {
        shown.clear();
        onChanged();
    }
}

void ShownMenus::showing(const ObjectReference& object, bool shows) {
    if (object.name != name) {
        reset();
        items.clear();
        name = object.name;
    }
    if (!shows) {
        if (const auto asked = learning.find(object.path); asked != learning.end()) {
            asked->second = false;
        }
        erase(object.path);
        erasePopups();
        return;
    }
    if (const auto known = items.find(object.path); known != items.end()) {
        if (known->second) {
            insert(object.path);
        }
        return;
    }
    learn(object);
}

void ShownMenus::learn(const ObjectReference& object) {
    if (learning.size() >= mostQuestions || !learning.emplace(object.path, true).second) {
        return;
    }
    ask(object.path, "GetRole", [this, path = object.path](sd_bus_message& answer) {
        const auto asked = learning.find(path);
        if (asked == learning.end()) {
            return;
        }
        const bool shows = asked->second;
        learning.erase(asked);
        const auto role = isAnswer(answer) ? readNumber(answer) : std::nullopt;
        if (!role) {
            return;
        }
        if (items.size() >= mostObjects) {
            items.clear();
        }
        if ((items[path] = isMenuItem(*role)) && shows) {
            insert(path);
        }
    });
}

void ShownMenus::popupAppeared(const ObjectReference& popup) {
    if (popup.name != name) {
        reset();
        items.clear();
        name = popup.name;
    }
    popups.insert(popup.path);
    insert(popup.path);
}

void ShownMenus::insert(const std::string& path) {
    const bool first = shown.empty();
    shown.insert(path);
    if (first) {
        openSince = scheduler.now();
        watch();
        onChanged();
    }
}

void ShownMenus::erase(const std::string& path) {
    popups.erase(path);
    if (shown.erase(path) > 0 && shown.empty()) {
        watching.reset();
        onChanged();
    }
}

/// A popup does not tell that it closes, but what is in it does.
void ShownMenus::erasePopups() {
    for (const auto& path : popups) {
        ask(path, "GetState", [this, path](sd_bus_message& answer) {
            const auto states = isAnswer(answer) ? readStates(answer) : std::nullopt;
            if (!states || !states->has(AccessibleState::showing)) {
                erase(path);
            }
        });
    }
}

void ShownMenus::watch() {
    watching = scheduler.runAfter(secondsOf(interval), [this] { verify(); });
}

void ShownMenus::verify() {
    if (shown.empty()) {
        return;
    }
    if (scheduler.now() - openSince >= secondsOf(longest)) {
        reset();
        return;
    }
    watch();
    for (const auto& path : shown) {
        ask(path, "GetState", [this, path](sd_bus_message& answer) {
            const auto states = isAnswer(answer) ? readStates(answer) : std::nullopt;
            if (!states || !states->has(AccessibleState::showing)) {
                erase(path);
            }
        });
    }
}

void ShownMenus::ask(const std::string& path, const char* member, BusConnection::Handler handler) {
    bus.call(bus.method(name, path, accessible, member), self,
             [this, asked = name, handler = std::move(handler)](sd_bus_message& answer) {
                 if (asked == name) {
                     handler(answer);
                 }
             });
}

} // namespace orvantile::platform::a11y
