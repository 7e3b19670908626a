#include "macos/shell/runtime/ClassTable.h"
#include "macos/shell/runtime/ObjectTable.h"

#include <cstddef>
#include <cstring>

// The entry points that the compiler calls for ownership, properties and classes.

using namespace orvantile::test::objc;

extern "C" {

void* _objc_empty_cache = nullptr;

extern void* _NSConcreteStackBlock[32];
extern void* _NSConcreteMallocBlock[32];
extern void* _NSConcreteGlobalBlock[32];
void* _Block_copy(const void* block);
void _Block_release(const void* block);
Object* objc_msgSend_unrecorded(void* receiver, const char* selector, ...);
}

namespace {

ObjectTable& objects() {
    return ObjectTable::shared();
}

bool isBlock(const Object* object) {
    const void* isa = object->isa;
    return isa == _NSConcreteStackBlock || isa == _NSConcreteMallocBlock || isa == _NSConcreteGlobalBlock;
}

Object** slot(Object* object, std::ptrdiff_t offset) {
    return reinterpret_cast<Object**>(reinterpret_cast<char*>(object) + offset);
}

} // namespace

extern "C" {

Object* objc_retain(Object* object) {
    if (object != nullptr && isBlock(object)) {
        // Retaining does not move a block from the stack.
        return object->isa == static_cast<void*>(_NSConcreteMallocBlock)
                   ? static_cast<Object*>(_Block_copy(object))
                   : object;
    }
    objects().retain(object);
    return object;
}

void objc_release(Object* object) {
    if (object != nullptr && isBlock(object)) {
        _Block_release(object);
        return;
    }
    objects().release(object);
}

Object* objc_retainBlock(Object* block) {
    return static_cast<Object*>(_Block_copy(block));
}

Object* objc_autorelease(Object* object) {
    if (object != nullptr && isBlock(object)) {
        objects().addToPool(object);
    } else {
        objects().autorelease(object);
    }
    return object;
}

Object* objc_autoreleaseReturnValue(Object* object) {
    return objc_autorelease(object);
}

Object* objc_retainAutorelease(Object* object) {
    return objc_autorelease(objc_retain(object));
}

Object* objc_retainAutoreleaseReturnValue(Object* object) {
    return objc_autorelease(objc_retain(object));
}

Object* objc_retainAutoreleasedReturnValue(Object* object) {
    return objc_retain(object);
}

Object* objc_unsafeClaimAutoreleasedReturnValue(Object* object) {
    return object;
}

void* objc_autoreleasePoolPush() {
    return reinterpret_cast<void*>(objects().pushPool());
}

void objc_autoreleasePoolPop(void* pool) {
    objects().popPool(reinterpret_cast<std::size_t>(pool));
}

void objc_storeStrong(Object** place, Object* object) {
    Object* old = *place;
    *place = objc_retain(object);
    objc_release(old);
}

Object* objc_storeWeak(Object** place, Object* object) {
    objects().storeWeak(place, object);
    return object;
}

Object* objc_initWeak(Object** place, Object* object) {
    *place = nullptr;
    return objc_storeWeak(place, object);
}

void objc_destroyWeak(Object** place) {
    objc_storeWeak(place, nullptr);
}

Object* objc_loadWeakRetained(Object** place) {
    return objc_retain(*place);
}

void objc_copyWeak(Object** to, Object** from) {
    objc_initWeak(to, *from);
}

void objc_moveWeak(Object** to, Object** from) {
    objc_initWeak(to, *from);
    objc_destroyWeak(from);
}

Object* objc_getProperty(Object* object, const char*, std::ptrdiff_t offset, bool) {
    return objc_autorelease(objc_retain(*slot(object, offset)));
}

void objc_setProperty_atomic(Object* object, const char*, Object* value, std::ptrdiff_t offset) {
    objc_storeStrong(slot(object, offset), value);
}

void objc_setProperty_nonatomic(Object* object, const char*, Object* value, std::ptrdiff_t offset) {
    objc_storeStrong(slot(object, offset), value);
}

void objc_setProperty_atomic_copy(Object* object, const char*, Object* value, std::ptrdiff_t offset) {
    objc_storeStrong(slot(object, offset), value);
}

void objc_setProperty_nonatomic_copy(Object* object, const char*, Object* value, std::ptrdiff_t offset) {
    objc_storeStrong(slot(object, offset), value);
}

void objc_copyStruct(void* to, const void* from, std::ptrdiff_t size, bool, bool) {
    std::memcpy(to, from, static_cast<std::size_t>(size));
}

Object* objc_alloc(Class* type) {
    return type == nullptr ? nullptr : objc_msgSend_unrecorded(type, "alloc");
}

Object* objc_alloc_init(Class* type) {
    Object* object = objc_alloc(type);
    return object == nullptr ? nullptr : objc_msgSend_unrecorded(object, "init");
}

Object* objc_opt_new(Class* type) {
    return objc_alloc_init(type);
}

Class* objc_opt_class(Object* object) {
    if (object == nullptr) {
        return nullptr;
    }
    return isClassObject(object) ? reinterpret_cast<Class*>(object) : object->isa;
}

bool objc_opt_isKindOfClass(Object* object, Class* kind) {
    for (Class* type = objc_opt_class(object); type != nullptr; type = type->super) {
        if (type == kind) {
            return true;
        }
    }
    return false;
}

bool objc_opt_respondsToSelector(Object* object, const char* selector) {
    return object != nullptr && findMethod(object->isa, selector).method != nullptr;
}
}
