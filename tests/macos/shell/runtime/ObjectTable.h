#pragma once

#include "macos/shell/runtime/Abi.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvantile::test::objc {

/// Every object on the heap with its reference count. Misuse of ownership ends the program.
class ObjectTable {
public:
    [[nodiscard]] static ObjectTable& shared();

    /// A new object with a count of one, its C++ members constructed.
    [[nodiscard]] Object* allocate(Class* type);

    /// Both ignore null, class objects and string constants.
    void retain(Object* object);
    void release(Object* object);

    void requireAlive(const Object* object, const char* selector) const;

    /// Null is stored in `place` when the object goes.
    void storeWeak(Object** place, Object* object);

    [[nodiscard]] std::size_t count() const { return counts.size(); }

    /// How many objects of each class there are, as text.
    [[nodiscard]] std::string describe() const;

    /// Pools are numbered from one. What nobody has made a pool for is never released.
    [[nodiscard]] std::size_t pushPool();
    void popPool(std::size_t pool);
    void autorelease(Object* object);

    /// For what is not counted here, such as blocks.
    void addToPool(Object* object);

private:
    void destroy(Object* object);

    std::unordered_map<const Object*, long> counts;
    std::unordered_map<const Object*, std::set<Object**>> weakPlaces;
    std::vector<std::vector<Object*>> pools;
};

} // namespace orvantile::test::objc
