#include "macos/shell/runtime/ClassTable.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <span>

namespace {

using orvantile::test::objc::Class;

} // namespace

// The linker collects the classes of all objects between these two.
extern "C" {
extern Class* classListBegin[] __asm__("__start_objc_classlist");
extern Class* classListEnd[] __asm__("__stop_objc_classlist");
}

namespace orvantile::test::objc {
namespace {

std::span<Class*> allClasses() {
    return {classListBegin, classListEnd};
}

const Method* methodAt(const MethodList& list, std::uint32_t index) {
    const auto* first = reinterpret_cast<const char*>(&list.first[0]);
    return reinterpret_cast<const Method*>(first + std::size_t{index} * list.entrySize);
}

void layOut(Class& type, std::set<Class*>& done) {
    if (!done.insert(&type).second || type.super == nullptr) {
        return;
    }
    layOut(*type.super, done);
    const auto needed = type.super->data->instanceSize;
    auto& data = *type.data;
    if (data.instanceStart >= needed) {
        return;
    }
    constexpr std::uint32_t alignment = 16;
    const auto shift = (needed - data.instanceStart + alignment - 1) / alignment * alignment;
    if (data.variables != nullptr) {
        for (std::uint32_t index = 0; index < data.variables->count; ++index) {
            *data.variables->first[index].offset += static_cast<std::int32_t>(shift);
        }
    }
    data.instanceStart += shift;
    data.instanceSize += shift;
}

} // namespace

void misuse(const std::string& what) {
    std::fprintf(stderr, "Objective-C misuse: %s\n", what.c_str());
    std::abort();
}

FoundMethod findMethod(const Class* type, const char* selector) {
    for (; type != nullptr; type = type->super) {
        const auto* methods = type->data->methods;
        for (std::uint32_t index = 0; methods != nullptr && index < methods->count; ++index) {
            const auto* method = methodAt(*methods, index);
            if (std::strcmp(method->selector, selector) == 0) {
                return {method, type};
            }
        }
    }
    return {};
}

Class* classNamed(const std::string& name) {
    for (auto* type : allClasses()) {
        if (name == type->data->name) {
            return type;
        }
    }
    return nullptr;
}

bool isClassObject(const Object* object) {
    for (const auto* type : allClasses()) {
        if (static_cast<const void*>(type) == object || static_cast<const void*>(type->isa) == object) {
            return true;
        }
    }
    return false;
}

void layOutInstances() {
    static std::set<Class*> done;
    if (done.empty()) {
        for (auto* type : allClasses()) {
            layOut(*type, done);
        }
    }
}

} // namespace orvantile::test::objc
