#include "macos/shell/runtime/MessageSend.h"

#include "macos/shell/runtime/ClassTable.h"
#include "macos/shell/runtime/ObjectTable.h"

#include <cstring>
#include <string>

#if !defined(__x86_64__)
#error "the test runtime sends messages on x86-64 only"
#endif

namespace orvantile::test::objc {
namespace {

/// The frame that the entry points below build.
struct Frame {
    double vectors[16]; ///< eight registers of sixteen bytes
    std::uint64_t integers[6];
    std::uint64_t vectorCount;
    std::uint64_t unused;
    std::uint64_t framePointer;
    std::uint64_t returnAddress;
    std::uint64_t stack[1];
};

/// What a super message is sent to.
struct SuperReceiver {
    Object* object;
    Class* sender;
};

const FoundMethod require(const FoundMethod& found, const Object* receiver, const char* selector) {
    if (found.method == nullptr) {
        misuse(std::string(isClassObject(receiver) ? "+[" : "-[") + receiver->isa->data->name + " " +
               selector + "] is not there");
    }
    return found;
}

void* deliver(const Frame& frame, int receiverIndex, bool recorded) {
    const auto* receiver = reinterpret_cast<Object*>(frame.integers[receiverIndex]);
    const auto* selector = reinterpret_cast<const char*>(frame.integers[receiverIndex + 1]);
    ObjectTable::shared().requireAlive(receiver, selector);
    const auto found = require(findMethod(receiver->isa, selector), receiver, selector);
    if (recorded) {
        const int first = receiverIndex + 2;
        messageSent(receiver, found.implementedBy, *found.method,
                    {&frame.integers[first], 6 - first, &frame.vectors[0], &frame.stack[0]});
    }
    return found.method->implementation;
}

} // namespace
} // namespace orvantile::test::objc

using namespace orvantile::test::objc;

extern "C" {

void* objcTestDeliver(const Frame* frame) {
    return deliver(*frame, 0, true);
}

void* objcTestDeliverStret(const Frame* frame) {
    return deliver(*frame, 1, true);
}

void* objcTestDeliverUnrecorded(const Frame* frame) {
    return deliver(*frame, 0, false);
}

void* objcTestDeliverStretUnrecorded(const Frame* frame) {
    return deliver(*frame, 1, false);
}

/// Also puts the object itself where its method expects it.
void* objcTestDeliverSuper(Frame* frame) {
    const auto* super = reinterpret_cast<SuperReceiver*>(frame->integers[0]);
    const auto* selector = reinterpret_cast<const char*>(frame->integers[1]);
    const auto found = require(findMethod(super->sender->super, selector), super->object, selector);
    frame->integers[0] = reinterpret_cast<std::uint64_t>(super->object);
    return found.method->implementation;
}
}

// Each entry point saves the argument registers in a Frame, asks for the implementation and jumps to it with
// the registers as they were. A message to nil is answered with zero.
__asm__(R"(
.text
.macro ENTRY name, finder, receiver, nil
.globl \name
.type \name, @function
\name:
    test \receiver, \receiver
    jz \nil
    push %rbp
    mov %rsp, %rbp
    sub $192, %rsp
    movups %xmm0, 0(%rsp)
    movups %xmm1, 16(%rsp)
    movups %xmm2, 32(%rsp)
    movups %xmm3, 48(%rsp)
    movups %xmm4, 64(%rsp)
    movups %xmm5, 80(%rsp)
    movups %xmm6, 96(%rsp)
    movups %xmm7, 112(%rsp)
    mov %rdi, 128(%rsp)
    mov %rsi, 136(%rsp)
    mov %rdx, 144(%rsp)
    mov %rcx, 152(%rsp)
    mov %r8, 160(%rsp)
    mov %r9, 168(%rsp)
    mov %rax, 176(%rsp)
    mov %rsp, %rdi
    call \finder@PLT
    mov %rax, %r11
    movups 0(%rsp), %xmm0
    movups 16(%rsp), %xmm1
    movups 32(%rsp), %xmm2
    movups 48(%rsp), %xmm3
    movups 64(%rsp), %xmm4
    movups 80(%rsp), %xmm5
    movups 96(%rsp), %xmm6
    movups 112(%rsp), %xmm7
    mov 128(%rsp), %rdi
    mov 136(%rsp), %rsi
    mov 144(%rsp), %rdx
    mov 152(%rsp), %rcx
    mov 160(%rsp), %r8
    mov 168(%rsp), %r9
    mov 176(%rsp), %rax
    leave
    jmp *%r11
.size \name, . - \name
.endm

objcTestNil:
    xor %eax, %eax
    xor %edx, %edx
    pxor %xmm0, %xmm0
    pxor %xmm1, %xmm1
    ret
objcTestNilStret:
    mov %rdi, %rax
    ret

ENTRY objc_msgSend, objcTestDeliver, %rdi, objcTestNil
ENTRY objc_msgSend_stret, objcTestDeliverStret, %rsi, objcTestNilStret
ENTRY objc_msgSend_unrecorded, objcTestDeliverUnrecorded, %rdi, objcTestNil
ENTRY objc_msgSend_stret_unrecorded, objcTestDeliverStretUnrecorded, %rsi, objcTestNilStret
ENTRY objc_msgSendSuper2, objcTestDeliverSuper, %rdi, objcTestNil
.purgem ENTRY
)");
