// What the product calls of the dispatch library, declared for machines without the SDK. Tests only.
#pragma once

#include <stdint.h>

extern "C" {

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef void (*dispatch_function_t)(void* context);

/// The main queue itself: on a Mac, too, asking for the main queue is an inline function.
extern struct dispatch_queue_s _dispatch_main_q;

static inline dispatch_queue_t dispatch_get_main_queue(void) {
    return &_dispatch_main_q;
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);

typedef uint64_t dispatch_time_t;
#define DISPATCH_TIME_NOW (0ULL)
#define NSEC_PER_SEC 1000000000ULL
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context, dispatch_function_t work);
}
