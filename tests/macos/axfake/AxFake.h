#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <QString>
#include <cstdint>
#include <deque>
#include <dispatch/dispatch.h>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

namespace orvantile::test {

namespace ax {
struct Object;
struct Observer;
struct Source;
} // namespace ax

/// An element of a fake application, as the system would tell of it.
struct FakeElement {
    struct NoValue {}; ///< the copy succeeds and yields nothing

    using Value = std::variant<QString, std::int64_t, double, bool, NoValue>;

    std::map<QString, Value> attributes;
    AXError error = kAXErrorSuccess; ///< what every copy returns, unless it is success
};

/// Stands in for the accessibility interface, the objects, run loop and main queue of a Mac while it lives;
/// there is one at a time. It counts references and checks types, and a misuse ends the process with a line
/// on standard error. Nothing happens by itself: the run loop and the main queue turn when they are told to.
class AxFake {
public:
    AxFake();
    AxFake(const AxFake&) = delete;
    AxFake& operator=(const AxFake&) = delete;
    ~AxFake();

    /// The one that lives. Calling into the doubles without one is a misuse.
    [[nodiscard]] static AxFake& current();

    bool trusted = true;
    std::map<pid_t, AXError> unobservable;        ///< what creating an observer of a process returns
    std::set<pid_t> withoutObserver;              ///< creation succeeds and yields nothing
    std::set<pid_t> withoutElement;               ///< there is no application element
    std::map<QString, AXError> unservedAttribute; ///< what copying an attribute returns
    std::set<QString> unservedNotifications;
    std::set<pid_t> gone;       ///< processes that have ended
    bool losesContexts = false; ///< callbacks get no reference constant
    bool outOfMemory = false;   ///< no string can be made

    /// What the product has called, in order. Functions that only look at objects are left out.
    std::vector<std::string> calls;

    /// The process posts a notification about an element of it. Waits until the run loop turns; lost when
    /// nobody has asked for it.
    void post(pid_t process, const QString& notification, std::shared_ptr<const FakeElement> element);

    /// Delivers what waits for the sources on the main run loop in `mode`, in order. Returns how many.
    int turnRunLoop(CFRunLoopMode mode = kCFRunLoopDefaultMode);

    /// Runs the work that is on the main queue now, in order. Returns how much that was.
    int turnMainQueue();

    /// Moves the clock of the main queue; what is due then runs in the next turn.
    void advance(double seconds);

    /// Turns both until nothing is left.
    void turn();

    /// Objects that somebody still holds.
    [[nodiscard]] int liveObjects() const { return living; }

    [[nodiscard]] int sourcesOnMainLoop() const { return static_cast<int>(sources.size()); }

    // For the doubles themselves.
    struct Notification {
        const ax::Observer* observer;
        QString name;
        std::shared_ptr<const FakeElement> element;
    };

    template <typename Type, typename... Arguments>
    Type& make(Arguments&&... arguments) {
        auto object = std::make_unique<Type>(std::forward<Arguments>(arguments)...);
        auto& made = *object;
        const ax::Object* address = &made;
        objects.emplace(address, std::move(object));
        ++living;
        return made;
    }

    void log(std::string line) { calls.push_back(std::move(line)); }

    [[nodiscard]] ax::Object* find(const void* reference) const;

    /// A reference to an object that is no longer there: what a failed call leaves where it would have put
    /// one.
    [[nodiscard]] const void* garbage();

    void destroyed(ax::Object& object); ///< its last reference has been released
    void requireMainThread(const char* function) const;

    std::set<std::pair<ax::Source*, CFRunLoopMode>> sources; ///< on the main run loop
    std::deque<std::pair<dispatch_function_t, void*>> queue;
    std::multimap<dispatch_time_t, std::pair<dispatch_function_t, void*>> delayed;
    dispatch_time_t now = NSEC_PER_SEC;
    std::vector<ax::Observer*> observers;

private:
    std::map<const void*, std::unique_ptr<ax::Object>> objects;
    std::deque<Notification> notifications;
    std::thread::id mainThread = std::this_thread::get_id();
    int living = 0;
    bool turning = false;
};

} // namespace orvantile::test
