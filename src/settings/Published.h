#pragma once

#include "settings/Publisher.h"

#include <functional>
#include <utility>

namespace orvantile {

/// A value that announces each assignment before it takes place and stores it afterwards, equal or not.
///
/// An assignment (1) announces the change object-wide, (2) delivers the new value to this property's
/// subscribers, who still read the old one, (3) stores it and (4) hands it to be persisted. A subscriber that
/// assigns the property while it is told of an assignment has its own value announced, stored and persisted
/// in full; the assignment under way then completes and stays. Main thread only.
template <typename Value>
class Published {
public:
    using Persist = std::function<void(const Value&)>;

    Published(Value initial, Publisher<>& objectWillChange_, Persist persist_)
        : stored(std::move(initial)),
          objectWillChange(objectWillChange_),
          persist(std::move(persist_)) {}

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;
    Published(Published&&) = delete;
    Published& operator=(Published&&) = delete;
    ~Published() = default;

    [[nodiscard]] const Value& operator()() const { return stored; }

    Published& operator=(Value value) {
        objectWillChange.send();
        const Value* outer = std::exchange(announced, &value);
        publisher.send(value);
        announced = outer;
        stored = std::move(value);
        persist(Value(stored));
        return *this;
    }

    /// Delivers the current value at once and every later one when it is announced. During an announcement
    /// the current value is the announced one, so that no subscriber ever misses what will be stored.
    [[nodiscard]] Subscription subscribe(typename Publisher<Value>::Handler handler) {
        auto subscription = publisher.subscribe(handler);
        handler(Value(announced != nullptr ? *announced : stored));
        return subscription;
    }

private:
    Value stored;
    const Value* announced = nullptr; ///< the value being delivered, null outside announcements
    Publisher<>& objectWillChange;
    Publisher<Value> publisher;
    Persist persist;
};

} // namespace orvantile
