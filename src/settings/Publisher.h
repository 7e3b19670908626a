#pragma once

#include "settings/Subscription.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orvantile {

/// Tells subscribers about events. Subscribers may be added and may leave during a delivery: one that is
/// added does not hear the delivery under way, one that leaves hears nothing any more. Main thread only.
template <typename... Arguments>
class Publisher {
public:
    using Handler = std::function<void(const Arguments&...)>;

    [[nodiscard]] Subscription subscribe(Handler handler) {
        auto entry = std::make_shared<Handler>(std::move(handler));
        entries->push_back(entry);
        return Subscription([list = std::weak_ptr(entries), entry = std::weak_ptr(entry)] {
            const auto ended = entry.lock();
            if (!ended) {
                return;
            }
            *ended = nullptr;
            if (const auto existing = list.lock()) {
                std::erase(*existing, ended);
            }
        });
    }

    void send(const Arguments&... arguments) const {
        const auto snapshot = *entries;
        for (const auto& entry : snapshot) {
            if (*entry) {
                const auto handler = *entry; // it may end its own subscription while it runs
                handler(arguments...);
            }
        }
    }

private:
    using Entries = std::vector<std::shared_ptr<Handler>>;
    std::shared_ptr<Entries> entries = std::make_shared<Entries>();
};

} // namespace orvantile
