#include "macos/shell/runtime/ObjectTable.h"

#include "macos/shell/runtime/ClassTable.h"

#include <cstdlib>
#include <cstring>

extern "C" void objc_release(orvantile::test::objc::Object* object);

namespace orvantile::test::objc {
namespace {

constexpr long dying = 1L << 30;

/// String constants lie in the program itself.
bool isConstant(const Object* object) {
    return std::strcmp(object->isa->data->name, "FakeConstantString") == 0;
}

bool isCounted(const Object* object) {
    return object != nullptr && !isClassObject(object) && !isConstant(object);
}

const Method* ownMethod(const Class* type, const char* selector) {
    const auto found = findMethod(type, selector);
    return found.implementedBy == type ? found.method : nullptr;
}

void construct(Object* object, const Class* type) {
    if (type->super != nullptr) {
        construct(object, type->super);
    }
    if (const auto* method = ownMethod(type, ".cxx_construct")) {
        reinterpret_cast<Object* (*)(Object*, const char*)>(method->implementation)(object, method->selector);
    }
}

void call(Object* object, const Method* method) {
    if (method != nullptr) {
        reinterpret_cast<void (*)(Object*, const char*)>(method->implementation)(object, method->selector);
    }
}

} // namespace

ObjectTable& ObjectTable::shared() {
    static ObjectTable table;
    return table;
}

Object* ObjectTable::allocate(Class* type) {
    layOutInstances();
    auto* object = static_cast<Object*>(std::calloc(1, type->data->instanceSize));
    object->isa = type;
    counts[object] = 1;
    construct(object, type);
    return object;
}

void ObjectTable::retain(Object* object) {
    if (!isCounted(object)) {
        return;
    }
    const auto found = counts.find(object);
    if (found == counts.end()) {
        misuse("a dead object is retained");
    }
    ++found->second;
}

void ObjectTable::release(Object* object) {
    if (!isCounted(object)) {
        return;
    }
    const auto found = counts.find(object);
    if (found == counts.end()) {
        misuse("a dead object is released");
    }
    if (--found->second == 0) {
        found->second = dying;
        destroy(object);
    }
}

void ObjectTable::destroy(Object* object) {
    if (const auto found = weakPlaces.find(object); found != weakPlaces.end()) {
        for (auto** place : found->second) {
            *place = nullptr;
        }
        weakPlaces.erase(found);
    }
    call(object, findMethod(object->isa, "dealloc").method);
    for (const auto* type = object->isa; type != nullptr; type = type->super) {
        call(object, ownMethod(type, ".cxx_destruct"));
    }
    counts.erase(object);
    std::free(object);
}

void ObjectTable::requireAlive(const Object* object, const char* selector) const {
    if (!isClassObject(object) && !counts.contains(object) && !isConstant(object)) {
        misuse(std::string("a dead object is sent ") + selector);
    }
}

void ObjectTable::storeWeak(Object** place, Object* object) {
    if (*place != nullptr) {
        weakPlaces[*place].erase(place);
    }
    *place = object;
    if (object != nullptr) {
        weakPlaces[object].insert(place);
    }
}

std::string ObjectTable::describe() const {
    std::map<std::string, int> byClass;
    for (const auto& [object, count] : counts) {
        ++byClass[object->isa->data->name];
    }
    std::string text;
    for (const auto& [name, number] : byClass) {
        text += name + " " + std::to_string(number) + "\n";
    }
    return text;
}

std::size_t ObjectTable::pushPool() {
    pools.emplace_back();
    return pools.size();
}

void ObjectTable::popPool(std::size_t pool) {
    if (pool == 0 || pool > pools.size()) {
        misuse("a pool is popped that is not there");
    }
    while (pools.size() >= pool) {
        const auto objects = std::move(pools.back());
        pools.pop_back();
        for (auto* object : objects) {
            objc_release(object);
        }
    }
}

void ObjectTable::autorelease(Object* object) {
    if (isCounted(object)) {
        addToPool(object);
    }
}

void ObjectTable::addToPool(Object* object) {
    if (pools.empty()) {
        misuse("there is no pool to autorelease to");
    }
    pools.back().push_back(object);
}

} // namespace orvantile::test::objc
