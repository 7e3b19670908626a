#include <cstdlib>
#include <cstring>

// The blocks runtime, so that the objects which blocks capture are counted like all others.

namespace {

enum Flags : int {
    countMask = 0xfffe,
    oneReference = 2,
    onHeap = 1 << 24,
    hasCopyAndDispose = 1 << 25,
    isGlobal = 1 << 28,
};

enum FieldFlags : int {
    fieldIsBlock = 7,
    fieldIsByReference = 8,
    fieldIsOfByReference = 128,
};

struct Descriptor {
    unsigned long reserved;
    unsigned long size;
    void (*copy)(void* to, const void* from);
    void (*dispose)(const void* block);
};

struct Block {
    void* isa;
    int flags;
    int reserved;
    void (*invoke)();
    Descriptor* descriptor;
};

} // namespace

extern "C" {

void* _NSConcreteStackBlock[32];
void* _NSConcreteMallocBlock[32];
void* _NSConcreteGlobalBlock[32];

void* objc_retain(void* object);
void objc_release(void* object);

void* _Block_copy(const void* source) {
    auto* block = static_cast<Block*>(const_cast<void*>(source));
    if (block == nullptr || (block->flags & isGlobal) != 0) {
        return block;
    }
    if ((block->flags & onHeap) != 0) {
        block->flags += oneReference;
        return block;
    }
    auto* copy = static_cast<Block*>(std::malloc(block->descriptor->size));
    std::memcpy(copy, block, block->descriptor->size);
    copy->isa = static_cast<void*>(_NSConcreteMallocBlock);
    copy->flags = (copy->flags & ~countMask) | onHeap | oneReference;
    if ((copy->flags & hasCopyAndDispose) != 0) {
        copy->descriptor->copy(copy, block);
    }
    return copy;
}

void _Block_release(const void* source) {
    auto* block = static_cast<Block*>(const_cast<void*>(source));
    if (block == nullptr || (block->flags & onHeap) == 0) {
        return;
    }
    block->flags -= oneReference;
    if ((block->flags & countMask) != 0) {
        return;
    }
    if ((block->flags & hasCopyAndDispose) != 0) {
        block->descriptor->dispose(block);
    }
    std::free(block);
}

void _Block_object_assign(void* destination, const void* object, int flags) {
    if ((flags & fieldIsByReference) != 0) {
        std::abort(); // __block variables are not used
    }
    auto** place = static_cast<const void**>(destination);
    if ((flags & fieldIsBlock) == fieldIsBlock) {
        *place = _Block_copy(object);
    } else {
        *place = (flags & fieldIsOfByReference) != 0 ? object : objc_retain(const_cast<void*>(object));
    }
}

void _Block_object_dispose(const void* object, int flags) {
    if ((flags & fieldIsBlock) == fieldIsBlock) {
        _Block_release(object);
    } else if ((flags & fieldIsOfByReference) == 0) {
        objc_release(const_cast<void*>(object));
    }
}
}
