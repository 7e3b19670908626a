#pragma once

#include <cstdint>

// What the compiler emits for classes of Objective-C's modern ABI on a 64-bit machine.
namespace orvantile::test::objc {

struct Method {
    const char* selector;
    const char* types;
    void* implementation;
};

struct MethodList {
    std::uint32_t entrySize;
    std::uint32_t count;
    Method first[1];
};

struct InstanceVariable {
    std::int32_t* offset;
    const char* name;
    const char* type;
    std::uint32_t alignment;
    std::uint32_t size;
};

struct InstanceVariableList {
    std::uint32_t entrySize;
    std::uint32_t count;
    InstanceVariable first[1];
};

struct ClassData {
    std::uint32_t flags;
    std::uint32_t instanceStart;
    std::uint32_t instanceSize;
    std::uint32_t reserved;
    const std::uint8_t* strongLayout;
    const char* name;
    MethodList* methods;
    void* protocols;
    InstanceVariableList* variables;
    const std::uint8_t* weakLayout;
    void* properties;
};

struct Class {
    Class* isa; ///< the metaclass
    Class* super;
    void* cache;
    void* table;
    ClassData* data;
};

struct Object {
    Class* isa;
};

} // namespace orvantile::test::objc
