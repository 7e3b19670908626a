#pragma once

#include "macos/axfake/AxFake.h"

#include <CoreFoundation/CoreFoundation.h>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace orvantile::test::ax {

enum class Kind { string = 1, number, boolean, dictionary, element, observer, source, runLoop };

/// What every reference of the doubles points to. Objects that have died stay as they are until the fake
/// ends, so that any later use of them is noticed.
struct Object {
    explicit Object(Kind kind_) : kind(kind_) {}

    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    Kind kind;
    long references = 1;
};

struct String final : Object {
    static constexpr Kind itsKind = Kind::string;

    explicit String(QString text_) : Object(itsKind), text(std::move(text_)) {}

    QString text;
};

struct Number final : Object {
    static constexpr Kind itsKind = Kind::number;

    explicit Number(std::variant<std::int64_t, double> value_) : Object(itsKind), value(value_) {}

    std::variant<std::int64_t, double> value;
};

struct Truth final : Object {
    static constexpr Kind itsKind = Kind::boolean;

    explicit Truth(bool value_) : Object(itsKind), value(value_) {}

    bool value;
};

struct Dictionary final : Object {
    static constexpr Kind itsKind = Kind::dictionary;

    Dictionary() : Object(itsKind) {}

    std::vector<std::pair<const void*, const void*>> entries; ///< keys and values, each retained
};

struct Element final : Object {
    static constexpr Kind itsKind = Kind::element;

    Element(pid_t process_, std::shared_ptr<const FakeElement> content_)
        : Object(itsKind),
          process(process_),
          content(std::move(content_)) {}

    pid_t process;
    std::shared_ptr<const FakeElement> content; ///< null for an application
};

struct RunLoop final : Object {
    static constexpr Kind itsKind = Kind::runLoop;

    explicit RunLoop(const char* name_) : Object(itsKind), name(name_) {}

    const char* name;
};

/// Belongs to its observer.
struct Source final : Object {
    static constexpr Kind itsKind = Kind::source;

    explicit Source(pid_t process_) : Object(itsKind), process(process_) {}

    pid_t process;
};

struct Observer final : Object {
    static constexpr Kind itsKind = Kind::observer;

    Observer(pid_t process_, AXObserverCallback callback_)
        : Object(itsKind),
          process(process_),
          callback(callback_) {}

    pid_t process;
    AXObserverCallback callback;
    Source* source = nullptr;
    std::map<QString, void*> subscriptions; ///< reference constants by notification
};

/// Ends the process with a line that says what was wrong.
[[noreturn]] void misuse(const char* function, const char* what);

/// The object behind a reference, which must be alive and of that type.
template <typename Type>
[[nodiscard]] Type& as(const void* reference, const char* function);

[[nodiscard]] Object& live(const void* reference, const char* function);

/// The constant of the system that `reference` refers to, or null.
[[nodiscard]] Object* findConstant(const void* reference);

template <typename Reference>
[[nodiscard]] Reference toReference(const Object& object) {
    return reinterpret_cast<Reference>(const_cast<Object*>(&object));
}

template <typename Type>
Type& as(const void* reference, const char* function) {
    auto& object = live(reference, function);
    if (object.kind != Type::itsKind) {
        misuse(function, "an object of another type");
    }
    return static_cast<Type&>(object);
}

} // namespace orvantile::test::ax
