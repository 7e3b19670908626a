#pragma once

#include "settings/Subscription.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orvantile {

/// Tells subscribers about events, in the order in which they subscribed. Subscribers may be added and may
/// leave during a delivery: one that is added does not hear the delivery under way, one that leaves hears
/// nothing any more. Main thread only.
template <typename... Arguments>
class Publisher {
public:
    using Handler = std::function<void(const Arguments&...)>;

    [[nodiscard]] Subscription subscribe(Handler handler) {
        auto subscriber = std::make_shared<Subscriber>(std::move(handler));
        subscribers->push_back(subscriber);
        return Subscription([list = std::weak_ptr(subscribers), weak = std::weak_ptr(subscriber)] {
            if (const auto ended = weak.lock()) {
                ended->listens = false;
                if (const auto existing = list.lock()) {
                    std::erase(*existing, ended);
                }
            }
        });
    }

    void send(const Arguments&... arguments) const {
        const auto present = *subscribers; // keeps a handler alive that ends its own subscription
        for (const auto& subscriber : present) {
            if (subscriber->listens) {
                subscriber->handler(arguments...);
            }
        }
    }

private:
    struct Subscriber {
        explicit Subscriber(Handler handler_) : handler(std::move(handler_)) {}

        Handler handler;
        bool listens = true;
    };

    using Subscribers = std::vector<std::shared_ptr<Subscriber>>;
    std::shared_ptr<Subscribers> subscribers = std::make_shared<Subscribers>();
};

} // namespace orvantile
