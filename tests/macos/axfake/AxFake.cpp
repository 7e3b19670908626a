#include "macos/axfake/AxFake.h"

#include "macos/axfake/Objects.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace orvantile::test {
namespace {

AxFake*& currentFake() {
    static AxFake* fake = nullptr;
    return fake;
}

} // namespace

namespace ax {

void misuse(const char* function, const char* what) {
    std::fprintf(stderr, "misuse: %s: %s\n", function, what);
    std::abort();
}

Object& live(const void* reference, const char* function) {
    if (reference == nullptr) {
        misuse(function, "a null reference");
    }
    auto* object = AxFake::current().find(reference);
    if (object == nullptr) {
        misuse(function, "a reference to no object");
    }
    if (object->references <= 0) {
        misuse(function, "an object that has been released");
    }
    return *object;
}

} // namespace ax

AxFake::AxFake() {
    if (std::exchange(currentFake(), this) != nullptr) {
        ax::misuse("AxFake", "there is one already");
    }
}

AxFake::~AxFake() {
    currentFake() = nullptr;
}

AxFake& AxFake::current() {
    if (currentFake() == nullptr) {
        ax::misuse("AxFake", "there is none");
    }
    return *currentFake();
}

void AxFake::post(pid_t process, const QString& notification, std::shared_ptr<const FakeElement> element) {
    for (const auto* observer : observers) {
        if (observer->process == process && observer->subscriptions.contains(notification)) {
            notifications.push_back({observer, notification, element});
        }
    }
}

int AxFake::turnRunLoop(CFRunLoopMode mode) {
    if (std::exchange(turning, true)) {
        ax::misuse("AxFake::turnRunLoop", "turned from inside a callback");
    }
    int delivered = 0;
    std::deque<Notification> waiting;
    for (const auto& notification : std::exchange(notifications, {})) {
        const auto& observer = *notification.observer;
        if (observer.references <= 0) {
            continue; // what an observer has not heard goes with it
        }
        if (!sources.contains({observer.source, mode})) {
            waiting.push_back(notification);
            continue;
        }
        const auto& element = make<ax::Element>(observer.process, notification.element);
        const auto& name = make<ax::String>(notification.name);
        observer.callback(ax::toReference<AXObserverRef>(observer), ax::toReference<AXUIElementRef>(element),
                          ax::toReference<CFStringRef>(name),
                          losesContexts ? nullptr : observer.subscriptions.at(notification.name));
        CFRelease(ax::toReference<CFTypeRef>(name));
        CFRelease(ax::toReference<CFTypeRef>(element));
        ++delivered;
    }
    notifications.insert(notifications.begin(), waiting.begin(), waiting.end());
    turning = false;
    return delivered;
}

int AxFake::turnMainQueue() {
    const auto work = std::exchange(queue, {});
    for (const auto& [function, context] : work) {
        function(context);
    }
    return static_cast<int>(work.size());
}

void AxFake::advance(double seconds) {
    now += static_cast<dispatch_time_t>(std::llround(seconds * NSEC_PER_SEC));
    const auto due = delayed.upper_bound(now);
    for (auto entry = delayed.begin(); entry != due; entry = delayed.erase(entry)) {
        queue.push_back(entry->second);
    }
}

void AxFake::turn() {
    while (turnRunLoop() + turnMainQueue() > 0) {
    }
}

ax::Object* AxFake::find(const void* reference) const {
    const auto found = objects.find(reference);
    return found == objects.end() ? ax::findConstant(reference) : found->second.get();
}

const void* AxFake::garbage() {
    auto& object = make<ax::String>(QString());
    object.references = 0;
    --living;
    return ax::toReference<CFTypeRef>(object);
}

void AxFake::destroyed(ax::Object& object) {
    --living;
    if (object.kind == ax::Kind::dictionary) {
        for (const auto& [key, value] : static_cast<const ax::Dictionary&>(object).entries) {
            CFRelease(key);
            CFRelease(value);
        }
    } else if (object.kind == ax::Kind::observer) {
        auto& observer = static_cast<ax::Observer&>(object);
        std::erase_if(sources, [&](const auto& entry) { return entry.first == observer.source; });
        std::erase(observers, &observer);
        observer.source->references = 0;
        --living;
        log("observer of " + std::to_string(observer.process) + " released");
    }
}

void AxFake::requireMainThread(const char* function) const {
    if (std::this_thread::get_id() != mainThread) {
        ax::misuse(function, "called off the main thread");
    }
}

} // namespace orvantile::test
