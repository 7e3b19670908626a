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

dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta) {
    if (when != DISPATCH_TIME_NOW || delta < 0) {
        ax::misuse("dispatch_time", "a time that is not from now on");
    }
    return AxFake::current().now + static_cast<dispatch_time_t>(delta);
}

void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context, dispatch_function_t work) {
    auto& fake = AxFake::current();
    if (queue != &_dispatch_main_q || work == nullptr || when < fake.now) {
        ax::misuse("dispatch_after_f", "no queue, no work, or a time that was not asked for");
    }
    fake.log("dispatch_after_f " + std::to_string((when - fake.now) / 1000000) + " ms main");
    fake.delayed.emplace(when, std::pair(work, context));
}
}
