#include "platform/linux/menus/MenuSources.h"

#include <algorithm>
#include <utility>

namespace orvantile::platform::menus {

MenuSources::MenuSources(std::vector<std::unique_ptr<a11y::MenuModel>> sources_)
    : sources(std::move(sources_)) {
    sources.front()->onAvailable = [this] {
        if (onAvailable) {
            onAvailable();
        }
    };
}

bool MenuSources::isAvailable() const {
    return sources.front()->isAvailable();
}

void MenuSources::follow(std::int32_t processIdentifier) {
    for (const auto& source : sources) {
        source->follow(processIdentifier);
    }
}

void MenuSources::windowActivated(const session::ActiveWindow& window) {
    for (const auto& source : sources) {
        source->windowActivated(window);
    }
}

void MenuSources::menuClosed() {
    for (const auto& source : sources) {
        source->menuClosed();
    }
}

a11y::MenuAnswer MenuSources::commandFor(const session::ActiveWindow& window,
                                         const keys::Candidates& candidates) {
    for (const auto& source : sources) {
        if (auto answer = source->commandFor(window, candidates); answer.decided) {
            return answer;
        }
    }
    return {};
}

a11y::MenuReach MenuSources::reach(std::int32_t processIdentifier) const {
    a11y::MenuReach most;
    for (const auto& source : sources) {
        auto each = source->reach(processIdentifier);
        each.asked |= most.asked;
        if (each.accelerators > 0) {
            return each;
        }
        if (each.items > most.items || each.asked != most.asked) {
            most = {.items = std::max(each.items, most.items), .asked = each.asked};
        }
    }
    return most;
}

} // namespace orvantile::platform::menus
