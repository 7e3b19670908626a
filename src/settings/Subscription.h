#pragma once

#include <functional>
#include <utility>

namespace orvantile {

/// Keeps a subscription alive; destroying it ends it. May outlive what it subscribes to.
class Subscription {
public:
    Subscription() = default;

    explicit Subscription(std::function<void()> end_) : end(std::move(end_)) {}

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    Subscription(Subscription&& other) noexcept : end(std::exchange(other.end, nullptr)) {}

    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            end = std::exchange(other.end, nullptr);
        }
        return *this;
    }

    ~Subscription() { cancel(); }

    void cancel() {
        if (const auto ending = std::exchange(end, nullptr)) {
            ending();
        }
    }

private:
    std::function<void()> end;
};

} // namespace orvantile
