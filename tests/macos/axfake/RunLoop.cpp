// The doubles of the run loop and the main queue.

#include "macos/axfake/Objects.h"

using orvantile::test::AxFake;
namespace ax = orvantile::test::ax;

namespace {

/// Both functions take the same three things and are logged alike.
ax::Source& check(const char* function, CFRunLoopRef rl, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    auto& fake = AxFake::current();
    fake.requireMainThread(function);
    const auto& loop = ax::as<ax::RunLoop>(rl, function);
    auto& checked = ax::as<ax::Source>(source, function);
    const auto& name = ax::as<ax::String>(mode, function).text;
    fake.log(function + (" " + std::to_string(checked.process)) + " " + loop.name + " " + name.toStdString());
    return checked;
}

} // namespace

struct dispatch_queue_s {};

extern "C" {

struct dispatch_queue_s _dispatch_main_q;

void CFRunLoopAddSource(CFRunLoopRef rl, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    auto& added = check("CFRunLoopAddSource", rl, source, mode);
    if (rl == CFRunLoopGetMain() && !AxFake::current().sources.emplace(&added, mode).second) {
        ax::misuse("CFRunLoopAddSource", "a source that has been added already");
    }
}

void CFRunLoopRemoveSource(CFRunLoopRef rl, CFRunLoopSourceRef source, CFRunLoopMode mode) {
    auto& removed = check("CFRunLoopRemoveSource", rl, source, mode);
    if (rl != CFRunLoopGetMain() || AxFake::current().sources.erase({&removed, mode}) == 0) {
        ax::misuse("CFRunLoopRemoveSource", "a source that has not been added");
    }
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
    if (queue != &_dispatch_main_q || work == nullptr) {
        ax::misuse("dispatch_async_f", "no queue or no work");
    }
    auto& fake = AxFake::current();
    fake.log("dispatch_async_f main");
    fake.queue.emplace_back(work, context);
}
}
