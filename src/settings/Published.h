#pragma once

#include "settings/Publisher.h"

#include <functional>
#include <utility>

namespace orvantile {

/// A value that announces each assignment before it takes place and stores it afterwards, equal or not.
///
/// An assignment (1) announces the change object-wide, (2) delivers the new value to this property's
/// subscribers, who still read the old one, (3) stores it and (4) hands it to be persisted. Main thread only.
template <typename Value>
class Published {
public:
    using Persist = std::function<void(const Value&)>;

    Published(Value initial, Publisher<>& objectWillChange_, Persist persist_)
        : stored(std::move(initial)),
          announced(stored),
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
        announced = value;
        publisher.send(value);
        stored = std::move(value);
        persist(Value(stored));
        return *this;
    }

    /// Delivers the current value at once and every later one when it is announced.
    [[nodiscard]] Subscription subscribe(typename Publisher<Value>::Handler handler) {
        auto subscription = publisher.subscribe(handler);
        handler(Value(announced));
        return subscription;
    }

private:
    Value stored;
    Value announced; ///< ahead of `stored` while an assignment is being delivered
    Publisher<>& objectWillChange;
    Publisher<Value> publisher;
    Persist persist;
};

} // namespace orvantile
