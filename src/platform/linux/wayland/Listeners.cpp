#include "platform/linux/wayland/Listeners.h"

#include <utility>

namespace orvantile::platform::wayland {

Listeners::Token Listeners::add(std::function<void()> listener) {
    auto token = std::make_shared<const std::function<void()>>(std::move(listener));
    all.push_back(token);
    return token;
}

void Listeners::notify() {
    std::erase_if(all, [](const auto& listener) { return listener.expired(); });
    const auto present = all;
    for (const auto& weak : present) {
        if (const auto listener = weak.lock()) {
            (*listener)();
        }
    }
}

} // namespace orvantile::platform::wayland
